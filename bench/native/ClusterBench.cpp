#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

#include <pelta/Cluster/PgmClusterAlgorithm.h>

#include "ClusterMemory.h"
#include "Timing.h"

// Clustering beside supercluster on the same points, in turns, and what holding and changing them takes.

namespace {

using namespace pelta;
using bench::described;
using bench::median;
using bench::milliseconds;

constexpr int turns = 3;
constexpr int loadsATurn = 2;

class Place final : public PgmClusterItem {
 public:
    explicit Place(CLLocationCoordinate2D position) : position_(position) {}
    [[nodiscard]] CLLocationCoordinate2D position() const override { return position_; }

 private:
    CLLocationCoordinate2D position_;
};

using Items = std::vector<std::shared_ptr<PgmClusterItem>>;
using Milliseconds = std::vector<double>;

Items placesOverKorea(std::size_t count) {
    std::mt19937_64 random(20261121);
    std::uniform_real_distribution<double> latitude(33, 39);
    std::uniform_real_distribution<double> longitude(124, 132);
    Items items;
    for (std::size_t i = 0; i < count; ++i) {
        const double north = latitude(random);
        items.push_back(std::make_shared<Place>(CLLocationCoordinate2D{north, longitude(random)}));
    }
    return items;
}

std::string writePoints(const Items& items) {
    const auto path =
        std::filesystem::temp_directory_path() / ("pelta-bench-" + std::to_string(getpid()) + ".txt");
    std::FILE* file = std::fopen(path.c_str(), "w");
    if (file == nullptr) {
        std::perror(path.c_str());
        std::exit(1);
    }
    for (const auto& item : items) {
        std::fprintf(file, "%.17g %.17g\n", item->position().longitude, item->position().latitude);
    }
    std::fclose(file);
    return path;
}

void loadRival(const std::string& points, Milliseconds& times) {
    const std::string command =
        std::string(PELTA_NODE " " PELTA_RIVAL " ") + points + " " + std::to_string(loadsATurn);
    std::FILE* output = popen(command.c_str(), "r");
    double time = 0;
    int count = 0;
    while (output != nullptr && std::fscanf(output, "%lf", &time) == 1) {
        times.push_back(time);
        ++count;
    }
    if (output == nullptr || pclose(output) != 0 || count != loadsATurn) {
        std::fprintf(stderr, "supercluster did not run: %s\n", command.c_str());
        std::exit(1);
    }
}

void compareClustering(std::size_t count) {
    constexpr int zooms = 21;
    const Items items = placesOverKorea(count);
    const std::string points = writePoints(items);
    PgmNonHierarchicalDistanceBasedAlgorithm algorithm;
    algorithm.add(items);
    double first = 0;
    first = milliseconds([&] { (void)algorithm.clustersAtZoom(0); });
    std::vector<Milliseconds> times(zooms);
    Milliseconds rival;
    for (int turn = 0; turn < turns; ++turn) {
        for (int zoom = 0; zoom < zooms; ++zoom) {
            std::vector<std::shared_ptr<PgmCluster>> clusters;
            times[static_cast<std::size_t>(zoom)].push_back(
                milliseconds([&] { clusters = algorithm.clustersAtZoom(static_cast<float>(zoom)); }));
        }
        loadRival(points, rival);
    }
    std::filesystem::remove(points);
    const auto slowest = std::max_element(times.begin(), times.end(),
                                          [](const auto& a, const auto& b) { return median(a) < median(b); });
    std::printf("%9zu points\n", count);
    std::printf("  clustersAtZoom, slowest zoom (%2td)  ms %s\n", slowest - times.begin(),
                described(*slowest).c_str());
    std::printf("  clustersAtZoom(0), first call       ms %8.1f\n", first);
    std::printf("  supercluster load                   ms %s\n", described(rival).c_str());
    std::printf("  ratio                                  %8.3f\n", median(*slowest) / median(rival));
}

void measureChanges(std::size_t count, std::size_t removals) {
    Milliseconds adding;
    Milliseconds removing;
    double bytes = 0;
    for (int turn = 0; turn < turns * 2; ++turn) {
        const Items items = placesOverKorea(count);
        Items removed;
        for (std::size_t i = 0; i < removals; ++i) {
            removed.push_back(items[i * 7919 % count]);
        }
        PgmNonHierarchicalDistanceBasedAlgorithm algorithm;
        const std::size_t before = bytesInUse();
        adding.push_back(milliseconds([&] { algorithm.add(items); }));
        (void)algorithm.clustersAtZoom(10);
        bytes = static_cast<double>(bytesInUse() - before) / static_cast<double>(count);
        removing.push_back(milliseconds([&] { algorithm.remove(removed); }));
    }
    std::printf("  adding %zu items                ms %s\n", count, described(adding).c_str());
    std::printf("  removing %zu of them              ms %s\n", removals, described(removing).c_str());
    std::printf("  memory an item, beside the item  bytes %8.1f\n", bytes);
}

/// A worst case: seeds beyond the map's edge, none of which the others' searches can find, all reach the same
/// points.
void measureStrays(std::size_t count) {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> latitude(33, 39);
    std::uniform_real_distribution<double> longitude(176, 184);
    PgmNonHierarchicalDistanceBasedAlgorithm algorithm;
    for (std::size_t i = 0; i < count; ++i) {
        const double north = latitude(random);
        algorithm.add(std::make_shared<Place>(CLLocationCoordinate2D{north, longitude(random)}));
    }
    std::printf("  %zu points across the edge, zoom 0  ms %8.1f\n", count,
                milliseconds([&] { (void)algorithm.clustersAtZoom(0); }));
}

}  // namespace

int main(int count, char** words) {
    const std::size_t share = pelta::bench::isShortForm(count, words) ? 100 : 1;
    compareClustering(100'000 / share);
    measureChanges(100'000 / share, 1000 / share);
    measureStrays(100'000 / share);
    compareClustering(1'000'000 / share);
    return 0;
}
