#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <pelta/Platform/Bundle.h>

namespace pelta {

/// The pictures that the application has added, see `ApplicationResources`.
class WebBundle final : public Bundle {
 public:
    [[nodiscard]] static WebBundle& shared();

    void add(std::string name, double scale, std::vector<std::uint8_t> png);
    [[nodiscard]] std::optional<UIImage> imageNamed(std::string_view name) const override;

 private:
    using Versions = std::map<double, std::vector<std::uint8_t>>;
    std::map<std::string, Versions, std::less<>> pictures_;
};

}  // namespace pelta
