#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// The rival of the overlay benchmarks: what a program would hand-write if it needed nothing but the result.
/// Markers are plain records in one vector, a frame copies their drawing order and one record of drawn values
/// for each.
class FlatScene {
 public:
    struct Marker {
        std::string identifier;
        std::string title;
        std::string icon;
        double latitude = 0;
        double longitude = 0;
        double iconScale = 1;
        double alpha = 1;
        double titleSize = 12;
        std::int64_t globalZIndex = 1000;
        std::int64_t zIndex = 0;
        std::uint64_t index = 0;
    };

    void add(Marker marker);
    [[nodiscard]] std::vector<Marker>& markers() noexcept { return markers_; }

    /// Sorts by the stacking keys.
    void reorder();
    /// Builds the list of drawn records anew, as a frame after a structural change would.
    void rebuildFrame();
    /// Updates the drawn record of one marker, as a frame after a change of one property would.
    void updateFrame(std::size_t marker);

    /// Place in the drawing order of the topmost marker whose icon touches a square around a point; the
    /// number of markers when there is none. Places are points at zoom 10 of the Mercator square.
    [[nodiscard]] std::size_t topmostAt(double x, double y) const;

    [[nodiscard]] std::size_t drawnCount() const noexcept { return drawn_.size(); }

 private:
    struct Drawn {
        double x = 0;
        double y = 0;
        double iconScale = 1;
        double alpha = 1;
        std::string title;
        std::string icon;
    };

    [[nodiscard]] static Drawn draw(const Marker& marker);

    std::vector<Marker> markers_;
    std::vector<std::size_t> order_;
    std::vector<Drawn> drawn_;
};

}  // namespace bench
