// The knot that greets who starts the program for the first time.
#pragma once

#include "design/document.h"

namespace lorivan {

Document welcomeDocument();

}  // namespace lorivan
