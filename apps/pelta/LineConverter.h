#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <pelta/Coordinate/GeoTrans.h>

#include "FaultMessages.h"
#include "OutputText.h"

namespace pelta::command {

/// Rewrites files line by line with the coordinates at the start of each line in another system. Lines
/// without data stay as they are; a line that cannot be converted is told as a fault and starts with "* *".
class LineConverter {
 public:
    /// @param from,to   systems of `GeoTrans`.
    /// @param output    where the lines go; must outlive the converter.
    /// @param faults    are told lines that cannot be converted; must outlive the converter.
    LineConverter(int from, int to, OutputText& output, FaultMessages& faults);

    /// Takes the next piece of a file.
    void convert(std::string_view block, const std::string& fileName);
    /// Ends the file; the next piece is another one's.
    void endFile(const std::string& fileName);

    /// Lines so far, in all files.
    [[nodiscard]] std::uint64_t lines() const noexcept { return allLines_ + line_; }

 private:
    enum class Kind {
        point,
        fault,
        verbatim,  // a comment, or a line that goes on from the piece before
    };
    struct Line {
        Kind kind;
        std::string_view text;     // what is carried over
        std::string_view problem;  // of a fault
    };

    void read(std::string_view block);
    void readLine(std::string_view text, bool isWhole);
    void write(const Line& line, const GeoPoint& result, const std::string& fileName);
    void writeNumbers(std::string_view problem, const GeoPoint& result, const std::string& fileName);

    int from_;
    int to_;
    OutputText& output_;
    FaultMessages& faults_;
    std::vector<Line> pieces_;      // lines of the piece at hand
    std::vector<GeoPoint> points_;  // one for each line of them that has a point
    bool isInsideLine_ = false;     // the last piece ended inside a line
    std::uint64_t line_ = 0;        // of the file at hand
    std::uint64_t allLines_ = 0;    // of the files before
};

}  // namespace pelta::command
