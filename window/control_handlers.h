// What the controls of the form do, and when they can be used. Fields and check boxes of the parameter tables
// all do the same: what they hold becomes the document's.
#pragma once

#include "platform/window.h"
#include "window/commands.h"

namespace lorivan {

/// Brings the state of the buttons up to date.
void sortOutControls(Workbench& bench);

/// A button, a colour box, the list or an option button was used.
void runControl(ControlId control, Handlers& handlers);

/// The mouse on a picture.
void runMouse(ControlId picture, Handlers& handlers, const MouseEvent& event);

}  // namespace lorivan
