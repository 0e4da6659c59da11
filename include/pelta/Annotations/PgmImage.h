#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <pelta/Platform/Bundle.h>
#include <pelta/Platform/UIImage.h>

namespace pelta {

class PgmImage;

/// Hears about changes of an image, for the application's own use.
class PgmImageDelegate {
 public:
    virtual ~PgmImageDelegate() = default;
    /// `isEnabled` of the image has been written, to another value or the same.
    virtual void annotationImageNeedsRedisplay(PgmImage& image) = 0;
};

/// A picture together with the name by which the map's style knows it.
///
/// Shapes whose images have the same `reuseIdentifier` are drawn with one picture: the first that was put on
/// the map under that name, until another style is loaded. Main thread only, but for the built-in images.
class PgmImage {
 public:
    /// How images are passed around.
    using Ptr = std::shared_ptr<PgmImage>;

    /// @param reuseIdentifier  name in the style; without one, or with an empty one, "I:" and a number that
    /// no
    ///                         other image has.
    [[nodiscard]] static Ptr imageWith(UIImage picture,
                                       std::optional<std::string> reuseIdentifier = std::nullopt);
    /// The named picture of the application's own resources.
    ///
    /// @param reuseIdentifier  name in the style; without one, or with an empty one, a new UUID, so that two
    ///                         images made from one resource are two pictures in the style.
    /// @return null when there is no such picture.
    [[nodiscard]] static Ptr imageNamed(std::string_view name,
                                        std::optional<std::string> reuseIdentifier = std::nullopt);
    /// As `imageNamed`, from the given bundle; null stands for the application's own resources.
    [[nodiscard]] static Ptr imageNamedInBundle(std::string_view name, const Bundle* bundle,
                                                std::optional<std::string> reuseIdentifier = std::nullopt);

    /// @name Built-in images
    /// Made on first use, on any thread, for the screen's scale at that time; they live as long as the
    /// process. A picture that is missing from the library stops the process.
    /// @{
    /// Blue pin.
    [[nodiscard]] static const Ptr& markerImageBlue();
    /// Grey pin.
    [[nodiscard]] static const Ptr& markerImageGray();
    /// Green pin.
    [[nodiscard]] static const Ptr& markerImageGreen();
    /// Red pin, which a new marker has.
    [[nodiscard]] static const Ptr& markerImageRed();
    /// Yellow pin.
    [[nodiscard]] static const Ptr& markerImageYellow();
    /// The user's location, not followed.
    [[nodiscard]] static const Ptr& locationIconNomal();
    /// The user's location, followed.
    [[nodiscard]] static const Ptr& locationIconTracking();
    /// The user's location, followed with the device's heading.
    [[nodiscard]] static const Ptr& locationIconTrackingCompass();
    /// @}

    PgmImage() = delete;
    /// For the factories.
    PgmImage(UIImage picture, std::string reuseIdentifier);
    PgmImage(const PgmImage&) = delete;
    PgmImage& operator=(const PgmImage&) = delete;

    /// The picture itself.
    [[nodiscard]] const UIImage& image() const noexcept { return image_; }
    /// Name of the picture in the style.
    [[nodiscard]] const std::string& reuseIdentifier() const noexcept { return reuseIdentifier_; }
    /// Free for the application; absent at first.
    [[nodiscard]] const std::optional<std::string>& styleIconIdentifier() const noexcept {
        return styleIconIdentifier_;
    }
    void setStyleIconIdentifier(std::optional<std::string> identifier);
    /// Held weakly.
    [[nodiscard]] std::shared_ptr<PgmImageDelegate> delegate() const { return delegate_.lock(); }
    void setDelegate(const std::shared_ptr<PgmImageDelegate>& delegate) { delegate_ = delegate; }
    /// True at first. The map does not look at it.
    [[nodiscard]] bool isEnabled() const noexcept { return isEnabled_; }
    /// Stores the value and tells the delegate, also when the value is the same.
    void setIsEnabled(bool enabled);

 private:
    [[nodiscard]] static Ptr builtInImage(std::string_view name);

    UIImage image_;
    std::string reuseIdentifier_;
    std::optional<std::string> styleIconIdentifier_;
    std::weak_ptr<PgmImageDelegate> delegate_;
    bool isEnabled_ = true;
};

}  // namespace pelta
