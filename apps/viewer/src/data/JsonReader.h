#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "data/ScalarValue.h"

namespace pelta::viewer {

/// Hears what stands in a JSON text, in its order. Each call but `textIsNotUtf8` may end the reading by
/// returning false.
class JsonHandler {
 public:
    virtual ~JsonHandler() = default;
    virtual bool startObject() = 0;
    virtual bool endObject() = 0;
    virtual bool startArray() = 0;
    virtual bool endArray() = 0;
    virtual bool key(std::string_view name) = 0;
    virtual bool scalar(const ScalarValue& value) = 0;

    /// The key or text that is told next holds a byte that is not UTF-8, or half a surrogate pair; it is told
    /// as an empty one.
    ///
    /// @param position  of the text's opening quote, bytes from the start.
    virtual void textIsNotUtf8(std::size_t position) = 0;
};

/// Where a text stopped being JSON.
struct JsonFault {
    std::size_t position = 0;  ///< Of the first byte that does not belong there.
    std::string reason;
};

/// Reads a JSON text as events, without a tree of it and to any depth.
///
/// What is wrong with one value only is left to the handler: texts that are not UTF-8, the words NaN,
/// Infinity and -Infinity, and numbers that no double holds.
class JsonReader {
 public:
    /// @param text     UTF-8; a byte order mark before it is passed over. Both must outlive the reader.
    /// @param handler  is told what is read.
    JsonReader(std::string_view text, JsonHandler& handler) : text_(text), handler_(handler) {}

    /// @return where the text is no JSON; nothing when all was read or the handler ended it.
    [[nodiscard]] std::optional<JsonFault> read();

 private:
    // They return false when reading ends.
    bool readValue();
    bool readBehindValue();
    bool readKey();
    bool readScalar();
    bool readNumber(std::string_view word, ScalarValue& value);
    bool readText(std::string_view& text);
    bool readEscape();
    [[nodiscard]] std::optional<std::uint32_t> codeUnitAt(std::size_t position) const;

    [[nodiscard]] bool isAtEnd() const { return at_ == text_.size(); }
    [[nodiscard]] bool isAt(char sign) const { return !isAtEnd() && text_[at_] == sign; }
    [[nodiscard]] char closing() const { return open_.back() == '{' ? '}' : ']'; }
    bool take(char sign);
    void skipBlanks();
    bool fail(std::size_t position, std::string reason);
    bool unexpected();

    std::string_view text_;
    JsonHandler& handler_;
    std::size_t at_ = 0;
    std::string open_;     // brackets, innermost last
    std::string decoded_;  // the text at hand without its escapes, or the number
    std::optional<JsonFault> fault_;
};

}  // namespace pelta::viewer
