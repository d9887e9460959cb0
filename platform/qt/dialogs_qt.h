// Modal dialogs, Qt's own ones: they look and work the same on every desktop.
#pragma once

#include <optional>
#include <string>

#include "platform/window.h"

class QWidget;

namespace lorivan::dialogs {

void message(QWidget* parent, const std::string& text, const std::string& title, MessageIcon icon);
bool confirm(QWidget* parent, const std::string& text, const std::string& title);
SaveAnswer askToSave(QWidget* parent, const std::string& text, const std::string& title);
std::string chooseFile(QWidget* parent, const FileDialogSpec& spec);
std::optional<Colour> chooseColour(QWidget* parent, Colour initial);
std::optional<std::vector<OptionLine>> chooseOptions(QWidget* parent, const OptionDialogSpec& spec);
std::string inputBox(QWidget* parent, const std::string& prompt, const std::string& title,
                     const std::string& initial);

}  // namespace lorivan::dialogs
