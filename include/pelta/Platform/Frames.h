#pragma once

#include <memory>

namespace pelta {

/// Something that takes part in frames: a map.
class FrameParticipant {
 public:
    virtual ~FrameParticipant() = default;
    /// First step of a frame: moves what is animated to the time `now` (seconds on the port's clock).
    virtual void advanceTo(double now) = 0;
    /// Last step: does the deferred work and hands the changed model to the port.
    virtual void renderFrame() = 0;
};

/// Frames of the whole process. A frame advances every participant, runs the due tasks of the main queue, and
/// then lets every participant render. Main thread only.
class FrameLoop {
 public:
    /// Adds a participant, held weakly.
    static void add(std::weak_ptr<FrameParticipant> participant);
    /// Asks the port for one frame; any number of requests before it yields one. Without
    /// an installed port nothing happens.
    static void request();
    /// For ports: runs one frame at `now`. A call from within a frame is ignored.
    static void run(double now);
    /// For ports: true from a request until the frame it asked for begins.
    [[nodiscard]] static bool isRequested() noexcept;
    /// For ports: forgets participants and a pending request, before the port goes away.
    static void clear();
};

}  // namespace pelta
