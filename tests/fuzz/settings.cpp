// The settings, a line "key=value" each: a window that starts with any of them keeps what it starts with
// again.
#include <map>
#include <string>

#include "design/settings_table.h"
#include "fuzz.h"
#include "known_document.h"
#include "platform/none/none_platform.h"
#include "window/main_window.h"
#include "window/preferences.h"

namespace lorivan::fuzz {
namespace {

using Values = std::map<std::pair<std::string, std::string>, std::string>;

Values valuesOf(Bytes bytes) {
  Values values;
  for (const std::string& line : linesOf(bytes)) {
    const auto equals = std::min(line.find('='), line.size());
    values[{std::string(kSettingsSection), line.substr(0, equals)}] =
        line.substr(std::min(equals + 1, line.size()));
  }
  return values;
}

/// One window for all settings: what a start makes anew, takes long.
struct Bench {
  Bench() : main(platform, {}) { require(static_cast<bool>(main.open()), "the window opens"); }
  NonePlatform platform;
  MainWindow main;
};

/// What a window that started with `values` leaves behind.
Values kept(const Values& values, Document& shown) {
  static Bench one;
  Workbench& bench = one.main.bench();
  Values& stored = one.platform.settings().values;
  stored = values;
  shown = restoredDocument(one.platform.settings());
  bench.session.begin("", shown);
  bench.show(After::nothing);
  bench.recentFiles.clear();
  restorePreferences(bench);
  require(bench.form.read() == shown.fields, "the form shows the document");
  stored.clear();
  require(static_cast<bool>(keepPreferences(bench)), "the settings are kept");
  return stored;
}

}  // namespace

void settings(Bytes bytes) {
  const Values values = valuesOf(bytes);
  Document first, second;
  const Values once = kept(values, first);
  requireStored(first);
  const Values twice = kept(once, second);
  require(first.fields == second.fields, "the next start shows the same fields");
  require(once == twice, "the next start leaves the same settings");
}

}  // namespace lorivan::fuzz
