#include <gmock/gmock.h>

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
    const struct {
        const char* query;
        const char* problem;
    } cases[] = {
        {"?data=", "data: an address is needed"},
        {"?style", "style: an address is needed"},
        {"?camera=", "latitude must be a number from -90 to 90"},
        {"?camera=37.5,127", "LAT,LNG,ZOOM[,TILT[,BEARING]] is needed"},
        {"?camera=1,2,3,4,5,6", "LAT,LNG,ZOOM[,TILT[,BEARING]] is needed"},
        {"?camera=91,2,3", "latitude must be"},
        {"?camera=1,-181,3", "longitude must be"},
        {"?camera=1,2,nan", "zoom must be"},
        {"?camera=1,2,3x", "zoom must be"},
        {"?camera=1,2,3,61", "tilt must be a number from 0 to 60"},
        {"?camera=1,2,3,,5", "tilt must be"},
        {"?camera=1,2,3,4,1e999", "bearing must be"},
    };
    for (const auto& test : cases) {
        const PageAddress address = parsePageAddress(test.query);
        EXPECT_THAT(address.problems, ElementsAre(HasSubstr(test.problem))) << test.query;
        EXPECT_FALSE(address.data || address.style || address.camera) << test.query;
    }
}

}  // namespace
}  // namespace pelta::viewer
