#include "design/version.h"

namespace lorivan {

constinit const std::string_view kVersion = LORIVAN_VERSION;

}  // namespace lorivan
