#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace pelta {

/// A text of a `TextPool`: equal ones are the same object, so comparing pointers compares texts. Null for
/// none.
using SharedText = std::shared_ptr<const std::string>;

/// Holds each text that is in use once.
class TextPool {
 public:
    [[nodiscard]] SharedText take(const std::string& text) {
        const auto known = texts_->find(text);
        if (known != texts_->end()) {
            return known->second.lock();
        }
        // The last user takes the entry out; the map may have gone by then.
        const auto remove = [texts = std::weak_ptr(texts_)](const std::string* gone) {
            if (const auto living = texts.lock()) {
                living->erase(*gone);
            }
            delete gone;
        };
        SharedText added(new std::string(text), remove);
        texts_->emplace(*added, added);
        return added;
    }

 private:
    using Texts = std::unordered_map<std::string_view, std::weak_ptr<const std::string>>;

    std::shared_ptr<Texts> texts_ = std::make_shared<Texts>();
};

}  // namespace pelta
