#include "Values.h"

#include <limits>
#include <sstream>

namespace pelta::random {

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double denormal = std::numeric_limits<double>::denorm_min();
constexpr double largest = std::numeric_limits<double>::max();

constexpr CLLocationCoordinate2D seoul{37.5665, 126.978};

Path manyPoints() {
    Path points;
    for (int i = 0; i < 2000; ++i) {
        points.push_back({37 + (i % 7) * 0.1, 127 + i * 0.001});
    }
    return points;
}

std::string document(const std::string& sources, const std::string& layers) {
    return R"({"version":8,"name":"random","sources":{)" + sources + R"(},"layers":[)" + layers + "]}";
}

UIImage picture(int width, int height, double scale) {
    const auto bytes = static_cast<std::size_t>(width * height) * 4;
    return *UIImage::fromPixels(width, height, scale, std::vector<std::uint8_t>(bytes, 200));
}

/// Numbers with themselves as their words.
template <class T>
std::vector<Named<T>> written(std::initializer_list<T> numbers, const std::string& unit = {}) {
    std::vector<Named<T>> result;
    for (const T number : numbers) {
        std::ostringstream words;
        words << number << unit;
        result.push_back({number, words.str()});
    }
    return result;
}

}  // namespace

const std::vector<Named<double>>& numbers() {
    static const auto values = written<double>(
        {0,   1,     0.5, 2,    3.7, 10.3,     12,        16,   45,    90,       200,     1000,  -1,
         -30, -1e-9, 400, -0.0, nan, infinity, -infinity, 1e30, -1e30, denormal, largest, 1e-300});
    return values;
}

const std::vector<Named<CLLocationCoordinate2D>>& coordinates() {
    static const std::vector<Named<CLLocationCoordinate2D>> values{
        {seoul, "Seoul"},
        {{37.4, 127.1}, "a place near Seoul"},
        {{35.18, 129.07}, "Busan"},
        {{0, 0}, "0° 0°"},
        {{10, 179.9}, "just west of the antimeridian"},
        {{10, -179.9}, "just east of the antimeridian"},
        {{10, 540}, "one and a half times around"},
        {{89.9, 20}, "the north pole"},
        {{-90, 20}, "the south pole"},
        {{nan, 127}, "latitude NaN"},
        {{37, nan}, "longitude NaN"},
        {{infinity, -infinity}, "infinity"},
        {{1e30, 1e30}, "1e30° 1e30°"},
        {{37, 1e10}, "longitude 1e10"},
        {{denormal, -denormal}, "5e-324° -5e-324°"}};
    return values;
}

const std::vector<Named<Path>>& paths() {
    static const std::vector<Named<Path>> values{
        {{{37, 126}, {37, 128}, {38, 127}}, "a triangle"},
        {{{37, 126.9}, {37.6, 127}}, "a line"},
        {{{37, 126}, {38, 128}, {37, 128}, {38, 126}}, "a bow that crosses itself"},
        {{{37, 127}, {37, 127}, {37, 127}}, "one point three times"},
        {{{10, 179}, {11, 181}, {9, 182}}, "a triangle across the antimeridian"},
        {{{37, 127}, {nan, 127}, {38, 128}}, "a line with NaN"},
        {{{-1e10, -1e10}, {1e10, 1e10}, {0, 1e10}}, "1e10° across"},
        {{{1e30, 1e30}, {-1e30, infinity}, {0, 0}}, "1e30° across"},
        {{{-85, -180}, {-85, 180}, {85, 180}, {85, -180}}, "the whole world"},
        {{{90, 0}, {90, 90}, {90, 180}}, "the north pole"},
        {manyPoints(), "2000 points"},
        {{{37, 127}}, "one point"},
        {{}, "no point"}};
    return values;
}

const std::vector<Named<std::string>>& texts() {
    static const std::vector<Named<std::string>> values{{"", "an empty text"},
                                                        {"Seoul", "\"Seoul\""},
                                                        {"서울 특별시", "\"서울 특별시\""},
                                                        {std::string(300, 'w'), "300 letters"},
                                                        {std::string(20000, 'w'), "20,000 letters"},
                                                        {std::string(200000, 'w'), "200,000 letters"},
                                                        {"\xff\xfe\x80", "bytes that are no UTF-8"},
                                                        {std::string("a\0b\n\t", 5), "control characters"},
                                                        {" ", "a blank"},
                                                        {"\xF0\x9F\x98\x80 ع‎", "an emoji and Arabic"}};
    return values;
}

const std::vector<Named<UIColor>>& colours() {
    static const std::vector<Named<UIColor>> values{{{1, 0, 0, 1}, "red"},
                                                    {{0, 0.5, 1, 0.3}, "pale blue"},
                                                    {UIColor::clear(), "clear"},
                                                    {{nan, 2, -1, infinity}, "a colour with NaN"}};
    return values;
}

const std::vector<Named<CGSize>>& sizes() {
    static const std::vector<Named<CGSize>> values{
        {{300, 200}, "300 × 200"},         {{400, 300}, "400 × 300"}, {{0, 0}, "0 × 0"},
        {{300, denormal}, "300 × 5e-324"}, {{1, 1}, "1 × 1"},         {{0, 300}, "0 × 300"},
        {{20000, 20}, "20,000 × 20"},      {{-5, 100}, "-5 × 100"},   {{nan, 200}, "NaN × 200"},
        {{300, 1e30}, "300 × 1e30"}};
    return values;
}

const std::vector<Named<CGPoint>>& places() {
    static const std::vector<Named<CGPoint>> values{{{150, 100}, "the middle of map 0"},
                                                    {{160, 110}, "beside the middle of map 0"},
                                                    {{150, 300}, "the middle of map 1"},
                                                    {{20, 220}, "a corner of map 1"},
                                                    {{150, 500}, "the middle of map 2"},
                                                    {{280, 180}, "a corner of map 0"},
                                                    {{0, 0}, "the corner of the window"},
                                                    {{-50, 900}, "outside of the window"},
                                                    {{nan, 100}, "x NaN"},
                                                    {{1e30, 1e30}, "1e30, 1e30"}};
    return values;
}

const std::vector<Named<double>>& seconds() {
    static const auto values = written<double>({0, 0.016, 0.05, 0.1, 0.25, 0.6, 3, nan, -1}, " s");
    return values;
}

const std::vector<Named<std::int64_t>>& orders() {
    using Limits = std::numeric_limits<std::int64_t>;
    static const auto values = written<std::int64_t>({0, 1, -1, 5000, -2000, Limits::min(), Limits::max()});
    return values;
}

const std::vector<Named<std::uint64_t>>& counts() {
    static const auto values =
        written<std::uint64_t>({0, 1, 2, 5, 40, 1000, 100, std::numeric_limits<std::uint64_t>::max()});
    return values;
}

const std::vector<Named<StyleText>>& styles() {
    const std::string source =
        R"("base":{"type":"geojson","data":{"type":"FeatureCollection","features":[]}})";
    const std::string ground = R"({"id":"ground","type":"background"})";
    const std::string labels = R"({"id":"places","type":"symbol","source":"base"})";
    const std::string roads = R"(,{"id":"roads","type":"line","source":"base"})";
    static const std::vector<Named<StyleText>> values{
        {{"labelled.json", document(source, ground + "," + labels + roads)}, "a style with labels"},
        {{"plain.json", document(source, ground + roads)}, "a style without labels"},
        {{"empty.json", document({}, {})}, "an empty style"},
        {{"lowest.json", document(source, labels + "," + ground)}, "a style whose labels lie lowest"},
        {{"taken.json", document(R"("pel-shapes":{"type":"geojson","data":""})", ground)},
         "a style with a source of the shapes' name"},
        {{"broken.json", R"({"version":8,"sources":)"}, "a broken style"},
        {{"missing.json", {}}, "a style that cannot be fetched"},
        {{"", {}}, "an empty address"}};
    return values;
}

const std::vector<Named<UIImage>>& pictures() {
    static const std::vector<Named<UIImage>> values{{picture(20, 30, 1), "a picture of 20 × 30"},
                                                    {picture(1, 1, 3), "a picture of one pixel"},
                                                    {picture(3000, 2, 1), "a picture of 3000 × 2"}};
    return values;
}

}  // namespace pelta::random
