#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <pelta/Pelta.h>

namespace pelta::random {

/// @file
/// What operations are given: for each type a short list of ordinary and of odd values, chosen by place.

/// A value with the words that lists of operations show it by.
template <class T>
struct Named {
    T value;
    std::string words;
};

using Path = std::vector<CLLocationCoordinate2D>;

[[nodiscard]] const std::vector<Named<double>>& numbers();
[[nodiscard]] const std::vector<Named<CLLocationCoordinate2D>>& coordinates();
/// Lines and outlines, also without points.
[[nodiscard]] const std::vector<Named<Path>>& paths();
[[nodiscard]] const std::vector<Named<std::string>>& texts();
[[nodiscard]] const std::vector<Named<UIColor>>& colours();
[[nodiscard]] const std::vector<Named<CGSize>>& sizes();
/// Points of the window.
[[nodiscard]] const std::vector<Named<CGPoint>>& places();
[[nodiscard]] const std::vector<Named<double>>& seconds();
/// Of stacking.
[[nodiscard]] const std::vector<Named<std::int64_t>>& orders();
[[nodiscard]] const std::vector<Named<std::uint64_t>>& counts();
/// Addresses of style documents, of which the World serves those that have a text.
struct StyleText {
    std::string address;
    std::string text;  ///< Empty for one that cannot be fetched.
};
[[nodiscard]] const std::vector<Named<StyleText>>& styles();
/// Pictures of an application, without a name of their own.
[[nodiscard]] const std::vector<Named<UIImage>>& pictures();

}  // namespace pelta::random
