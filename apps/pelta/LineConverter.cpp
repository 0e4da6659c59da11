#include "LineConverter.h"

#include <cmath>

#include "CoordinateLine.h"

namespace pelta::command {

namespace {

// A millimetre on the ground is about 1e-8 degrees; both say less than a tenth of one.
constexpr int metreDecimals = 4;
constexpr int degreeDecimals = 10;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

}  // namespace

LineConverter::LineConverter(int from, int to, OutputText& output, FaultMessages& faults)
    : from_(from), to_(to), output_(output), faults_(faults) {}

void LineConverter::convert(std::string_view block, const std::string& fileName) {
    if (line_ == 0 && !isInsideLine_ && block.starts_with(byteOrderMark)) {
        block.remove_prefix(byteOrderMark.size());
    }
    read(block);
    GeoTrans().convert(from_, to_, points_, points_);
    auto point = points_.begin();
    for (const Line& line : pieces_) {
        write(line, line.kind == Kind::point ? *point++ : GeoPoint(), fileName);
    }
    if (isInsideLine_) {
        // The line is counted when it ends.
        --line_;
    }
}

void LineConverter::endFile(const std::string& fileName) {
    faults_.endFile(fileName, "lines cannot be converted");
    allLines_ += line_;
    line_ = 0;
}

void LineConverter::read(std::string_view block) {
    pieces_.clear();
    points_.clear();
    while (!block.empty()) {
        const auto lineBreak = block.find('\n');
        if (isInsideLine_) {
            pieces_.push_back({Kind::verbatim, block.substr(0, lineBreak), {}});
        } else {
            readLine(block.substr(0, lineBreak), lineBreak != std::string_view::npos);
        }
        isInsideLine_ = lineBreak == std::string_view::npos;
        block.remove_prefix(isInsideLine_ ? block.size() : lineBreak + 1);
    }
}

void LineConverter::readLine(std::string_view text, bool isWhole) {
    const bool hasReturn = text.ends_with('\r');
    const std::string_view content = text.substr(0, text.size() - (hasReturn ? 1 : 0));
    CoordinateLine line = CoordinateLine::read(content);
    // The words may go on behind the piece, unless something follows them.
    const bool isCut = !isWhole && line.rest.empty() && !content.starts_with('#');
    if (isComment(content) && !isCut) {
        pieces_.push_back({Kind::verbatim, text, {}});
        return;
    }
    if (isCut) {
        line.problem = "the numbers are too far from the start of the line";
    }
    // Of a line break of two signs the first is carried over with the rest.
    const std::string_view rest(line.rest.data(), line.rest.size() + (hasReturn ? 1 : 0));
    pieces_.push_back({line.problem.empty() ? Kind::point : Kind::fault, rest, line.problem});
    if (line.problem.empty()) {
        points_.push_back({line.x, line.y, 0});
    }
}

void LineConverter::write(const Line& line, const GeoPoint& result, const std::string& fileName) {
    ++line_;
    if (line.kind != Kind::verbatim) {
        const bool isFinite = std::isfinite(result.x) && std::isfinite(result.y);
        writeNumbers(isFinite ? line.problem : "the result is not finite", result, fileName);
        if (!line.text.empty() && line.text != "\r") {
            output_.write(" ");
        }
    }
    output_.write(line.text);
    if (!(isInsideLine_ && &line == &pieces_.back())) {
        output_.write("\n");
    }
}

void LineConverter::writeNumbers(std::string_view problem, const GeoPoint& result,
                                 const std::string& fileName) {
    if (problem.empty()) {
        const int decimals = to_ == GeoTrans::GEO ? degreeDecimals : metreDecimals;
        output_.writeFixed(result.x, decimals);
        output_.write(" ");
        output_.writeFixed(result.y, decimals);
        return;
    }
    faults_.tell(fileName + ":" + std::to_string(line_), problem);
    output_.write("* *");
}

}  // namespace pelta::command
