#pragma once

#include <cstdint>
#include <map>
#include <memory>

#include <pelta/Annotations/PgmImage.h>
#include <pelta/Platform/UIColor.h>
#include <pelta/Platform/UIImage.h>

namespace pelta::viewer {

/// The library's marker in any colour, each colour drawn once.
class PinPictures {
 public:
    [[nodiscard]] std::shared_ptr<PgmImage> pin(UIColor color);

 private:
    std::map<std::uint32_t, std::shared_ptr<PgmImage>> pins_;  ///< By 0xRRGGBB.
};

/// A pin of one body colour with a darker rim and a lighter dot, in another colour: the body becomes exactly
/// that colour, the rim a darker shade of it, and the dot white, or dark on a light body. Transparency stays.
[[nodiscard]] UIImage recoloredPin(const UIImage& pin, UIColor body);

}  // namespace pelta::viewer
