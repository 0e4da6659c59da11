#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace pelta {

/// Writes a JSON text piece by piece; commas come by themselves. The caller keeps beginnings and ends paired.
class JsonWriter {
 public:
    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }
    /// Name of the member whose value comes next.
    void key(std::string_view name);

    void null() { raw("null"); }
    void value(std::string_view text);
    void value(const std::string& text) { value(std::string_view(text)); }
    void value(const char* text) { value(std::string_view(text)); }
    void value(bool flag) { raw(flag ? "true" : "false"); }
    /// At most 12 significant digits; 0 for what is not finite.
    void value(double number);
    /// Degrees, as far as a tenth of a millimetre on the ground; 0 for what is not finite. Many times as
    /// quick as another number.
    void degrees(double number);
    template <class Integer, std::enable_if_t<std::is_integral_v<Integer>, int> = 0>
    void value(Integer number) {
        raw(std::to_string(number));
    }
    /// A value that is JSON already.
    void raw(std::string_view json);

    /// Key and value of a member.
    template <class Value>
    void member(std::string_view name, const Value& content) {
        key(name);
        value(content);
    }

    [[nodiscard]] const std::string& text() const noexcept { return text_; }
    [[nodiscard]] std::string take() { return std::move(text_); }

 private:
    void open(char bracket);
    void close(char bracket);
    void separate();
    void quote(std::string_view text);

    std::string text_;
    bool needsComma_ = false;
};

}  // namespace pelta
