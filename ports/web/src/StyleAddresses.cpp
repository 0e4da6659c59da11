#include "StyleAddresses.h"

using emscripten::val;

namespace pelta {

namespace {

/// Resolves addresses against one base.
class Resolver {
 public:
    explicit Resolver(const std::string& documentAddress) {
        const val page = val::global("document")["baseURI"];
        base_ = documentAddress.empty() ? page : url(documentAddress, page);
    }

    /// Replaces a member that is an address, or a list of addresses.
    void resolve(val owner, const val& member) const {
        const val content = owner[member];
        if (content.isString()) {
            owner.set(member, absolute(content.as<std::string>()));
        } else if (content.isArray()) {
            const int count = content["length"].as<int>();
            for (int i = 0; i < count; ++i) {
                resolve(content, val(i));
            }
        } else if (isObject(content)) {
            resolve(content, val("url"));
        }
    }

    static bool isObject(const val& value) {
        return !value.isNull() && value.typeOf().as<std::string>() == "object";
    }

 private:
    static val url(const std::string& address, const val& base) {
        return val::global("URL").new_(address, base)["href"];
    }

    /// Addresses that a URL cannot be made of stay as they are, for the engine to complain about.
    [[nodiscard]] val absolute(const std::string& address) const {
        if (!val::global("URL")["canParse"].isUndefined() &&
            !val::global("URL").call<bool>("canParse", address, base_)) {
            return val(address);
        }
        // Placeholders such as {z} are not part of the address yet.
        val href = url(address, base_);
        href = href.call<val>("replaceAll", std::string("%7B"), std::string("{"));
        return href.call<val>("replaceAll", std::string("%7D"), std::string("}"));
    }

    val base_ = val::undefined();
};

}  // namespace

void resolveAddresses(val& document, const std::string& documentAddress) {
    const Resolver resolver(documentAddress);
    const val sources = document["sources"];
    const val names = val::global("Object").call<val>("keys", sources);
    const int count = names["length"].as<int>();
    for (int i = 0; i < count; ++i) {
        const val source = sources[names[i]];
        const val data = source["data"];
        // Data that is given in the document itself has no address.
        if (data.isString()) {
            resolver.resolve(source, val("data"));
        }
        for (const char* member : {"url", "urls", "tiles"}) {
            resolver.resolve(source, val(member));
        }
    }
    resolver.resolve(document, val("sprite"));
    resolver.resolve(document, val("glyphs"));
}

}  // namespace pelta
