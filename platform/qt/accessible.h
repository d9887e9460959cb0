// What screen readers are told of the widgets that Qt does not know.
#pragma once

namespace lorivan {

/// Gives pictures and groups their roles; once for the application, before its window is made.
void nameRoles();

}  // namespace lorivan
