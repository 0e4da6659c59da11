#pragma once

#include <emscripten/val.h>

#include <pelta/Platform/UIImage.h>

namespace pelta {

/// A canvas element of the given size in pixels.
[[nodiscard]] emscripten::val makeCanvas(int pixelWidth, int pixelHeight);
/// The two-dimensional drawing context of a canvas, set up for reading back.
[[nodiscard]] emscripten::val context2d(const emscripten::val& canvas);
/// A canvas element that shows a picture, one pixel a pixel.
[[nodiscard]] emscripten::val canvasWithPicture(const UIImage& image);
/// The picture's bytes as a typed array of their own, safe from the program's memory moving.
[[nodiscard]] emscripten::val pixelArray(const UIImage& image, const char* arrayType);

}  // namespace pelta
