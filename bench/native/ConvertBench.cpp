#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

#include "Timing.h"

// `pelta convert` beside PROJ's `cs2cs` on the same file.

namespace {

using pelta::bench::median;
using pelta::bench::milliseconds;

constexpr int turns = 3;

void writeLines(const std::string& path, int lineCount) {
    std::FILE* file = std::fopen(path.c_str(), "w");
    if (file == nullptr) {
        std::perror(path.c_str());
        std::exit(1);
    }
    std::mt19937_64 random(20261121);
    std::uniform_real_distribution<double> latitude(33, 39);
    std::uniform_real_distribution<double> longitude(124, 132);
    for (int i = 0; i < lineCount; ++i) {
        const double north = latitude(random);
        std::fprintf(file, "%.10f %.10f\n", longitude(random), north);
    }
    std::fclose(file);
}

double timeOf(const std::string& command) {
    int code = 0;
    const double time = milliseconds([&] { code = std::system(command.c_str()); });
    if (code != 0) {
        std::fprintf(stderr, "failed: %s\n", command.c_str());
        std::exit(1);
    }
    return time;
}

void print(const char* name, const std::vector<double>& times, int lineCount) {
    constexpr double millisecondsInSecond = 1000;
    std::printf("  %-14s ms %s, %.2f million lines a second\n", name, pelta::bench::described(times).c_str(),
                lineCount / median(times) * millisecondsInSecond / 1e6);
}

}  // namespace

int main(int count, char** words) {
    const int lineCount = pelta::bench::isShortForm(count, words) ? 50'000 : 5'000'000;
    const auto folder = std::filesystem::temp_directory_path() / ("pelta-bench-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    const std::string input = folder / "in.txt";
    const std::string ours = std::string(PELTA_COMMAND " convert --from wgs84 --to katec ") + input + " >" +
                             (folder / "ours.txt").string();
    const std::string rival =
        "cs2cs -f %.4f +proj=longlat +ellps=WGS84 +towgs84=0,0,0 +to +proj=tmerc +lat_0=38 +lon_0=128 "
        "+k=0.9999"
        " +x_0=400000 +y_0=600000 +ellps=bessel +towgs84=-146.43,507.89,681.46 " +
        input + " >" + (folder / "rival.txt").string();
    writeLines(input, lineCount);
    std::vector<double> times, rivalTimes;
    for (int turn = 0; turn < turns; ++turn) {
        rivalTimes.push_back(timeOf(rival));
        times.push_back(timeOf(ours));
    }
    std::printf("WGS84 to KATEC, a file of %d lines\n", lineCount);
    print("pelta convert", times, lineCount);
    print("cs2cs", rivalTimes, lineCount);
    std::printf("  throughput     %.2f times that of cs2cs\n", median(rivalTimes) / median(times));
    std::filesystem::remove_all(folder);
    return 0;
}
