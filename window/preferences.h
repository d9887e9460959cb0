// What the settings keep from one start to the next: the fields of the document, and what the window likes to
// be.
#pragma once

#include "design/document.h"
#include "window/workbench.h"

namespace lorivan {

/// The document of the settings: every kept field, the shape and the colours, and their grid. What is missing
/// or damaged is as at a first start.
Document restoredDocument(const Settings& settings);

/// Whether nothing was ever kept.
bool isFirstStart(const Settings& settings);

/// The language that was chosen in the menu, as its code; empty: the system's.
std::string languageSetting(const Settings& settings);

/// Gives the window and the sheet what the settings hold of them: place and size, flags, folder, recent
/// files.
void restorePreferences(Workbench& bench);

/// Writes every row of the settings table. The error says why the store does not have them.
Status keepPreferences(const Workbench& bench);

/// The knot shown last, with its walls and its own shape, where it has the fields that the settings hold;
/// else none.
std::optional<Document> lastKnot(const std::string& file, const Settings& settings);

}  // namespace lorivan
