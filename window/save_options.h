// What the user chose for saved files: the dialog that asks for it, and its text in the settings.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "design/output_options.h"
#include "platform/window.h"

namespace lorivan {

OptionDialogSpec saveOptionsDialog(const OutputOptions& options);

/// What the dialog's lines say.
OutputOptions optionsOf(const std::vector<OptionLine>& lines);

/// "120,,2000,1,1,0,0,0.15,0"; empty while nothing is chosen. Whatever cannot be read is not chosen.
std::string saveOptionsText(const OutputOptions& options);
OutputOptions readSaveOptions(std::string_view text);

}  // namespace lorivan
