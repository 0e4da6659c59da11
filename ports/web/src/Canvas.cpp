#include "Canvas.h"

using emscripten::val;

namespace pelta {

val makeCanvas(int pixelWidth, int pixelHeight) {
    val canvas = val::global("document").call<val>("createElement", std::string("canvas"));
    canvas.set("width", pixelWidth);
    canvas.set("height", pixelHeight);
    return canvas;
}

val context2d(const val& canvas) {
    val options = val::object();
    options.set("willReadFrequently", true);
    return canvas.call<val>("getContext", std::string("2d"), options);
}

val pixelArray(const UIImage& image, const char* arrayType) {
    const auto pixels = image.pixels();
    return val::global(arrayType).new_(val(emscripten::typed_memory_view(pixels.size(), pixels.data())));
}

val canvasWithPicture(const UIImage& image) {
    val canvas = makeCanvas(image.pixelWidth(), image.pixelHeight());
    const val data =
        val::global("ImageData")
            .new_(pixelArray(image, "Uint8ClampedArray"), image.pixelWidth(), image.pixelHeight());
    context2d(canvas).call<void>("putImageData", data, 0, 0);
    return canvas;
}

}  // namespace pelta
