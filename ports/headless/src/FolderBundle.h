#pragma once

#include <pelta/Platform/Bundle.h>

#include "DocumentFolder.h"

namespace pelta::headless {

/// The application's pictures: NAME.png, NAME@2x.png and NAME@3x.png in the resource folder.
class FolderBundle final : public Bundle {
 public:
    /// @param documents  knows the folder; outlives the bundle.
    explicit FolderBundle(const DocumentFolder& documents) : documents_(documents) {}

    [[nodiscard]] std::optional<UIImage> imageNamed(std::string_view name) const override;

 private:
    const DocumentFolder& documents_;
};

}  // namespace pelta::headless
