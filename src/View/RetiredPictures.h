#pragma once

#include <memory>
#include <vector>

#include <pelta/Annotations/PgmImage.h>
#include <pelta/Engine/MLNStyle.h>

namespace pelta {

/// Pictures of one style that info windows have shown and show no more. Each stays in the style as long as a
/// shape needs it, and until a frame without it has been drawn.
class RetiredPictures {
 public:
    /// Notes a picture; one that the style does not have is ignored.
    void add(std::shared_ptr<PgmImage> picture, const MLNStyle& style);
    /// Takes out of the style what no shape needed before the last frame and none needs now. To be called
    /// once a frame.
    /// @param needed  the pictures of all shapes.
    /// @return true when there is something to take out after this frame.
    [[nodiscard]] bool update(const std::vector<std::shared_ptr<PgmImage>>& needed, MLNStyle& style);
    [[nodiscard]] bool isEmpty() const noexcept { return pictures_.empty(); }
    /// Forgets all pictures, with the style that had them.
    void clear() noexcept { pictures_.clear(); }

 private:
    struct Picture {
        std::shared_ptr<PgmImage> image;
        bool isUnneeded = false;  ///< At the last update, whose frame has been drawn since.
    };
    std::vector<Picture> pictures_;
};

}  // namespace pelta
