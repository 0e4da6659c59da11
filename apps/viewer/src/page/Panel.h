#pragma once

#include <emscripten/val.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace pelta::viewer {

/// What is written beside the map. All texts are shown as they are: nothing in them is taken for markup.
class Panel {
 public:
    /// One document on the map.
    struct Entry {
        std::string name;
        std::string summary;
    };

    Panel();

    /// Panel, banner and ornaments are hidden in a snapshot.
    void setIsSnapshot(bool isSnapshot);
    /// "loading" or "ready", for tools that wait for the page.
    void setState(std::string_view state);
    void setEntries(const std::vector<Entry>& entries);
    /// What was wrong with the page's own address, with the documents, and what was left out for other
    /// reasons.
    void setMessages(const std::vector<std::string>& addressProblems,
                     const std::vector<std::string>& problems, const std::vector<std::string>& leftOuts);
    /// Shows a setting of the map as it is; those without a place in the panel are passed over.
    void setSwitch(std::string_view name, double value);
    /// A short notice that goes away by itself.
    void showNotice(std::string_view text);
    void showBanner(std::string_view message);
    void hideBanner();

 private:
    [[nodiscard]] emscripten::val element(const char* identifier) const;
    emscripten::val appendText(emscripten::val& parent, const char* tag, std::string_view text) const;
    void setList(const char* identifier, const std::vector<std::string>& items) const;

    emscripten::val document_;
    emscripten::val dataset_;
    std::shared_ptr<int> notice_;  ///< Number of the notice shown last.
};

}  // namespace pelta::viewer
