#include <gmock/gmock.h>

#include "CaseFile.h"
#include "data/PageAddress.h"

namespace pelta::viewer {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(PageAddress, ReadsEveryParameter) {
    const PageAddress address = parsePageAddress(
        "?data=a%20b%2Fc.geojson&camera=37.5,127,11.25,30,-45&style=https%3A%2F%2Fhost/"
        "s.json&fit&snapshot=1&x=1");
    EXPECT_EQ(address.data, "a b/c.geojson");
    EXPECT_EQ(address.style, "https://host/s.json");
    EXPECT_TRUE(address.isFit);
    EXPECT_TRUE(address.isSnapshot);
    ASSERT_TRUE(address.camera);
    EXPECT_EQ(address.camera->target, (CLLocationCoordinate2D{37.5, 127}));
    EXPECT_EQ(address.camera->zoom, 11.25);
    EXPECT_EQ(address.camera->tilt, 30);
    EXPECT_EQ(address.camera->bearing, -45);
    EXPECT_THAT(address.problems, IsEmpty());

    for (const char* const query : {"", "?", "?fit=0", "&&=&"}) {
        const PageAddress empty = parsePageAddress(query);
        EXPECT_FALSE(empty.data || empty.camera || empty.style || empty.isFit || empty.isSnapshot) << query;
        EXPECT_THAT(empty.problems, IsEmpty());
    }
}

TEST(PageAddress, IsSharedWithTheCameraAsItIs) {
    const struct {
        const char* query;
        CameraRequest camera;
        bool isClustered;
        const char* shared;
    } cases[] = {
        {"", {{37.5, -127.25}, 11}, false, "?camera=37.5,-127.25,11"},
        {"?data=a%20b&camera=1,2,3&fit&&style=x=y",
         {{-0.00000001, 100}, 0.12345, 0, 20},
         false,
         "?camera=0,100,0.123,0,20&data=a%20b&style=x=y"},
        {"?cluster=1&x", {{1, 2}, 3, 60, 0}, true, "?camera=1,2,3,60&cluster&x"},
        {"?cluster", {{1, 2}, 10, 0.01, -0.01}, false, "?camera=1,2,10"},
    };
    for (const auto& [query, camera, isClustered, shared] : cases) {
        EXPECT_EQ(sharedQuery(query, camera, isClustered), shared) << query;
        EXPECT_THAT(parsePageAddress(shared).problems, IsEmpty()) << shared;
        EXPECT_EQ(parsePageAddress(shared).isClustered, isClustered) << shared;
    }
}

TEST(PageAddress, NamesValuesThatCannotBeUsed) {
    for (const auto& [query, problems] : casesOf("Viewer/bad-addresses.txt")) {
        const PageAddress address = parsePageAddress(query);
        EXPECT_THAT(address.problems, ElementsAre(HasSubstr(problems[0]))) << query;
        EXPECT_FALSE(address.data || address.style || address.camera) << query;
    }
}

}  // namespace
}  // namespace pelta::viewer
