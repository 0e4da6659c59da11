#include <algorithm>
#include <functional>
#include <utility>

#include "MapFixture.h"

namespace pelta {
namespace {

std::string styleNamed(const std::string& name) {
    return R"({"version":8,"name":")" + name + R"(","sources":{},"layers":[]})";
}

/// Writes down what becomes of styles, by their names.
class StyleLog final : public PgmMapDelegate {
 public:
    void mapViewDidFinishLoadingStyle(PgmMapView& map) override {
        EXPECT_TRUE(map.didFinishLoadingMap());
        note(map, map.mapView()->style()->name());
    }
    void didFailLoadingStyle(PgmMapView& map, std::string_view message) override {
        failure = message;
        note(map, "failed");
    }
    void note(PgmMapView& map, const std::string& event) {
        events += (events.empty() ? "" : " ") + event;
        if (const auto work = std::exchange(next, nullptr)) {
            work(map);
        }
    }

    std::string events;
    std::string failure;
    std::function<void(PgmMapView&)> next;  ///< Runs once, from inside the next event.
};

class MapStyleTest : public MapFixture {
 protected:
    MapStyleTest() { port.serveDocument("other.json", styleNamed("other")); }

    /// What happens until the map rests, and what standard error says of it.
    std::pair<std::string, std::string> outcome() {
        ::testing::internal::CaptureStderr();
        EXPECT_TRUE(port.runUntilIdle());
        auto errors = ::testing::internal::GetCapturedStderr();
        return {std::exchange(log->events, {}), std::move(errors)};
    }

    std::shared_ptr<StyleLog> log = std::make_shared<StyleLog>();
};

using Change = std::function<void(PgmMapView&)>;

Change address(const std::string& text) {
    return [text](PgmMapView& map) { map.setStyleURL(text); };
}

Change document(const std::string& text) {
    return [text](PgmMapView& map) { map.setStyleJSON(text); };
}

TEST_F(MapStyleTest, AStyleThatFailsLeavesThePresentOneAndSaysSoInOneLine) {
    const auto map = makeLoadedMap();
    map->setDelegate(log);
    const auto marker = PgmMarker::markerWithPosition({1, 2});
    marker->setMapView(map);
    const auto layers = [&] { return outcome(), layersOf(map); };
    const auto drawn = layers();
    struct Case {
        std::string name;
        std::vector<Change> changes;
        std::string failure;  ///< A part of the message; empty for a style that loads.
        std::string events = "failed";
    };
    const Case cases[] = {
        {"not there", {address("missing.json")}, "missing.json"},
        {"no address", {address("")}, "not an address"},
        {"line break", {address("two\nlines")}, "not an address"},
        {"broken", {document("{\"version\":8,\n\"name\"")}, "line 2, column 6"},
        {"no style", {document("[]")}, "not an object"},
        {"nothing", {document("")}, "empty"},
        {"deep", {document(R"({"metadata":)" + std::string(1'000'000, '['))}, "deeper than 128"},
        {"the last fails", {address("other.json"), document("["), address("missing.json")}, "missing.json"},
        {"another", {address("other.json")}, "", "other"},
        {"text", {document(styleNamed("text"))}, "", "text"},
        {"the last loads", {address("missing.json"), document("["), address("other.json")}, "", "other"},
    };
    std::string present = "empty";
    for (const Case& c : cases) {
        for (const auto& change : c.changes) {
            change(*map);
            EXPECT_EQ(log->events, "") << c.name << ": never from inside the call";
        }
        const auto [events, errors] = outcome();
        EXPECT_EQ(events, c.events) << c.name;
        EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), c.failure.empty() ? 0 : 1) << errors;
        EXPECT_THAT(errors, testing::HasSubstr(c.failure)) << c.name;
        EXPECT_THAT(log->failure, testing::HasSubstr(c.failure)) << c.name;
        present = c.failure.empty() ? events : present;
        EXPECT_EQ(engineOf(map).style()->name(), present) << c.name;
        EXPECT_EQ(layersOf(map), drawn) << c.name << ": the marker";
    }
}

/// A map whose constructor sets a style.
class MapWithStyle final : public PgmMapView {
 public:
    MapWithStyle(CGRect frame, std::shared_ptr<PgmMapOptions> options,
                 const std::shared_ptr<PgmMapDelegate>& log)
        : PgmMapView(frame, std::move(options), log) {
        setStyleURL("missing.json");
        setStyleJSON(styleNamed("constructor"));
    }
};

TEST_F(MapStyleTest, ConstructorsAndOptionsNameTheFirstStyle) {
    const auto options = PgmMapOptions::create();
    const auto events = [&] {
        const auto map = PgmMapView::create(window->bounds(), options, log);
        return outcome().first;
    };
    const auto eventsOfSubclass = [&] {
        const auto map = make<MapWithStyle>(window->bounds(), options, log);
        return outcome().first;
    };
    EXPECT_EQ(events(), "empty") << "the default one";
    EXPECT_EQ(eventsOfSubclass(), "constructor");
    options->setStyleURL("other.json");
    EXPECT_EQ(events(), "other");
    EXPECT_EQ(eventsOfSubclass(), "other");
    options->setStyleJSON(styleNamed("text"));
    EXPECT_EQ(events(), "text");
    EXPECT_EQ(options->styleURL(), std::nullopt);
    options->setStyleURL("missing.json");
    EXPECT_EQ(events(), "failed");
    EXPECT_EQ(options->styleJSON(), std::nullopt);
}

TEST_F(MapStyleTest, TheDelegateMaySetAnotherStyleOrReleaseTheMap) {
    for (const std::string first : {"other.json", "missing.json"}) {
        const std::string told = first == "other.json" ? "other" : "failed";
        auto map = makeLoadedMap();
        map->setDelegate(log);
        log->next = document(styleNamed("next"));
        map->setStyleURL(first);
        EXPECT_EQ(outcome().first, told + " next");
        log->next = [&](PgmMapView&) {
            map->removeFromSuperview();
            map.reset();
        };
        map->setStyleURL(first);
        EXPECT_EQ(outcome().first, told);
        EXPECT_EQ(map, nullptr);
    }
}

}  // namespace
}  // namespace pelta
