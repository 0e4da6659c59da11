#include "page/Panel.h"

#include <pelta/Platform/Dispatch.h>

using emscripten::val;

namespace pelta::viewer {

Panel::Panel()
    : document_(val::global("document")),
      dataset_(document_["documentElement"]["dataset"]),
      notice_(std::make_shared<int>(0)) {}

val Panel::element(const char* identifier) const {
    return document_.call<val>("getElementById", std::string(identifier));
}

val Panel::appendText(val& parent, const char* tag, std::string_view text) const {
    val child = document_.call<val>("createElement", std::string(tag));
    child.set("textContent", std::string(text));
    parent.call<val>("appendChild", child);
    return child;
}

void Panel::setList(const char* identifier, const std::vector<std::string>& items) const {
    val list = element(identifier);
    list.set("textContent", std::string());
    for (const std::string& item : items) {
        appendText(list, "li", item);
    }
}

void Panel::setIsSnapshot(bool isSnapshot) {
    dataset_.set("mode", std::string(isSnapshot ? "snapshot" : "page"));
}

void Panel::setState(std::string_view state) {
    dataset_.set("state", std::string(state));
}

void Panel::setEntries(const std::vector<Entry>& entries) {
    val list = element("documents");
    list.set("textContent", std::string());
    for (const Entry& entry : entries) {
        val item = appendText(list, "li", {});
        appendText(item, "strong", entry.name);
        appendText(item, "span", entry.summary);
    }
}

void Panel::setMessages(const std::vector<std::string>& addressProblems,
                        const std::vector<std::string>& problems, const std::vector<std::string>& leftOuts) {
    setList("address-problems", addressProblems);
    setList("problems", problems);
    setList("left-outs", leftOuts);
    const auto count = addressProblems.size() + problems.size() + leftOuts.size();
    element("messages").set("hidden", count == 0);
}

void Panel::setSwitch(std::string_view name, double value) {
    val input = document_.call<val>("querySelector", "[data-switch=\"" + std::string(name) + "\"]");
    if (input.isNull()) {
        return;
    }
    if (input["type"].as<std::string>() == "checkbox") {
        input.set("checked", value != 0);
    } else {
        input.set("value", value);
    }
}

void Panel::showNotice(std::string_view text) {
    constexpr double seconds = 2.5;
    val notice = element("notice");
    notice.set("textContent", std::string(text));
    notice.set("hidden", false);
    MainQueue::asyncAfter(seconds, [notice, count = notice_, number = ++*notice_]() mutable {
        notice.set("hidden", number == *count);
    });
}

void Panel::showBanner(std::string_view message) {
    element("banner-text").set("textContent", std::string(message));
    element("banner").set("hidden", false);
}

void Panel::hideBanner() {
    element("banner").set("hidden", true);
}

}  // namespace pelta::viewer
