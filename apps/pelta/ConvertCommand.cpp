#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "Command.h"
#include "LineBlocks.h"
#include "LineConverter.h"
#include "OptionReader.h"
#include "OutputText.h"
#include "Progress.h"

namespace pelta::command {

namespace {

struct Settings {
    int from = -1;
    int to = -1;
    std::vector<std::string_view> files;
};

/// @return -1 for none of the five.
int systemOf(std::string_view name) {
    constexpr std::array<std::pair<std::string_view, int>, 5> systems{{{"wgs84", GeoTrans::GEO},
                                                                       {"katec", GeoTrans::KATEC},
                                                                       {"tm", GeoTrans::TM},
                                                                       {"grs80", GeoTrans::GRS80},
                                                                       {"utmk", GeoTrans::UTMK}}};
    const auto* const found = std::find_if(systems.begin(), systems.end(),
                                           [&](const auto& system) { return system.first == name; });
    return found == systems.end() ? -1 : found->second;
}

/// @return what is wrong with the words; empty when nothing is.
std::string readSettings(Arguments arguments, Settings& settings) {
    OptionReader options(arguments);
    while (const auto option = options.next()) {
        if (*option != "--from" && *option != "--to") {
            return "there is no option '" + std::string(*option) + "'";
        }
        const auto value = options.value();
        if (!value) {
            return std::string(*option) + " needs a value";
        }
        const int system = systemOf(*value);
        if (system < 0) {
            return std::string(*option) + " takes wgs84, katec, tm, grs80 or utmk; not '" +
                   std::string(*value) + "'";
        }
        (*option == "--from" ? settings.from : settings.to) = system;
    }
    if (settings.from < 0 || settings.to < 0) {
        return settings.from < 0 ? "--from is missing" : "--to is missing";
    }
    settings.files = options.others();
    if (settings.files.empty()) {
        settings.files.emplace_back("-");
    }
    return {};
}

/// @return false when the file could not be read to its end; standard error says why.
bool convertFile(std::string_view path, LineConverter& converter, OutputText& output, Progress& progress) {
    LineBlocks blocks(path);
    for (auto block = blocks.next(); !block.empty() && !output.hasFailed(); block = blocks.next()) {
        converter.convert(block, blocks.name());
        output.flush();
        if (progress.isDue()) {
            progress.show(blocks.name() + ": " + std::to_string(converter.lines()) + " lines");
        }
    }
    converter.endFile(blocks.name());
    if (!blocks.error().empty()) {
        progress.hide();
        std::fprintf(stderr, "%s: cannot be read: %s\n", blocks.name().c_str(), blocks.error().c_str());
    }
    return blocks.error().empty();
}

ExitCode runConvert(Arguments arguments) {
    Settings settings;
    if (const std::string problem = readSettings(arguments, settings); !problem.empty()) {
        return misuse(convertCommand.name, problem);
    }
    OutputText output;
    Progress progress;
    FaultMessages faults(progress);
    LineConverter converter(settings.from, settings.to, output, faults);
    bool isRead = true;
    for (const std::string_view path : settings.files) {
        isRead = convertFile(path, converter, output, progress) && isRead;
    }
    const bool isWritten = output.finish();
    return isRead && isWritten && faults.count() == 0 ? ExitCode::done : ExitCode::failed;
}

}  // namespace

const Command convertCommand{"convert", "move coordinates between WGS84 and the Korean plane grids",
                             R"(usage: pelta convert --from SYSTEM --to SYSTEM [FILE…]

Converts the two numbers at the start of each line from one system to another; no FILE, or -, is standard input.

  SYSTEM    wgs84   longitude and latitude, degrees
            katec   KATEC, metres east and north
            tm      TM on the Bessel ellipsoid, metres east and north
            grs80   TM on GRS80, metres east and north
            utmk    UTM-K, metres east and north

A line is: x y rest. Blanks, tabs or a comma stand between; the rest is carried over unchanged behind one blank. Lines
that are empty or start with # stay as they are. Degrees are written with 10 decimals, metres with 4.

A line that cannot be read, or has no finite result, is named on standard error as FILE:LINE: reason, and written with
"* *" for its numbers; the exit code is then 1, and the other lines are converted all the same. Of each file the first
100 such lines are named and the others counted. A file that the output is written to as well is not read.

Any size of file is converted in the same little memory.

Exit codes: 0 done, 1 failed in part or in whole, 2 wrong use.
)",
                             runConvert};

}  // namespace pelta::command
