#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string_view>
#include <tuple>
#include <vector>

#include <pelta/Platform/Bundle.h>
#include <pelta/headless/HeadlessPort.h>

namespace pelta {
namespace {

using namespace std::string_view_literals;

/// A PNG of 2 × 1 pixels, red and half-transparent green.
std::vector<std::uint8_t> smallPng() {
    constexpr std::string_view bytes =
        "\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\x02\0\0\0\x01\x08\x06\0\0\0\xF4\"\x7F\x8A\0\0\0\x0FIDATx\xDA"
        "c\xF8\xCF\xC0\xF0\x1F\x08\x1B\0\x10y\x03~\xC4\x18r\x90\0\0\0\0IEND\xAE\x42`\x82"sv;
    return {bytes.begin(), bytes.end()};
}

class PictureTest : public ::testing::Test {
 protected:
    HeadlessPort port_{2};
};

TEST_F(PictureTest, ReadsPngAndNothingElse) {
    const auto png = smallPng();
    const UIImage image = UIImage::fromEncoded(png, 2).value();
    EXPECT_EQ(image.size(), (CGSize{1, 0.5}));
    const std::vector<std::uint8_t> pixels(image.pixels().begin(), image.pixels().end());
    EXPECT_EQ(pixels, (std::vector<std::uint8_t>{255, 0, 0, 255, 0, 255, 0, 128}));

    EXPECT_FALSE(UIImage::fromEncoded(png, 0));
    EXPECT_FALSE(UIImage::fromEncoded({}, 1));
    // Cut anywhere before the end of its pixels, it is no picture.
    for (std::size_t length = 1; length < png.size() - 16; ++length) {
        EXPECT_FALSE(UIImage::fromEncoded(std::span(png).first(length), 1)) << length;
    }
    for (std::size_t index = 0; index < png.size(); ++index) {
        for (const int bit : {1, 64, 128}) {
            auto damaged = png;
            damaged[index] = static_cast<std::uint8_t>(damaged[index] ^ bit);
            const auto result = UIImage::fromEncoded(damaged, 1);  // Must not crash, whatever it answers.
            EXPECT_TRUE(!result || result->pixelWidth() > 0);
        }
    }
    auto huge = png;
    huge[18] = 0x7F;  // 32514 pixels wide.
    EXPECT_FALSE(UIImage::fromEncoded(huge, 1));
}

TEST_F(PictureTest, BundlesGiveTheVersionForTheScreen) {
    const auto folder = std::filesystem::path(::testing::TempDir()) / "pelta-pictures";
    std::filesystem::create_directories(folder);
    const auto png = smallPng();
    const auto write = [&](const char* name, std::size_t length) {
        std::ofstream(folder / name, std::ios::binary)
            .write(reinterpret_cast<const char*>(png.data()), static_cast<std::streamsize>(length));
    };
    write("dot.png", png.size());
    write("dot@3x.png", png.size());
    write("broken.png", 20);
    port_.setResourceFolder(folder);
    // The library has pictures for 1, 2 and 3 pixels a point, the folder for 1 and 3.
    for (const auto& [screenScale, ofLibrary, ofFolder] :
         {std::tuple{0.5, 1, 1}, {1, 1, 1}, {1.5, 2, 3}, {2, 2, 3}, {3, 3, 3}, {4, 3, 3}}) {
        port_.setScreenScale(screenScale);
        const UIImage own = Bundle::library().imageNamed("peltamap_default_marker_icon_red").value();
        EXPECT_EQ(own.scale(), ofLibrary) << screenScale;
        EXPECT_EQ(own.pixelWidth(), own.size().width * ofLibrary);
        EXPECT_EQ(Bundle::main().imageNamed("dot").value().scale(), ofFolder) << screenScale;
    }
    for (const char* missing : {"none", "", "broken", "peltamap_", "../dot"}) {
        EXPECT_FALSE(Bundle::main().imageNamed(missing) || Bundle::library().imageNamed(missing)) << missing;
    }
    std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace pelta
