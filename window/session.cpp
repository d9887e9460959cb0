#include "window/session.h"

#include "design/document_text.h"

namespace lorivan {

Session::Session(Platform& platform, Document floor)
    : history_({floor, 0}), origins_{{{}, std::move(floor)}}, recovery_(platform) {}

void Session::step(const std::string& name, Document next, std::string_view run) {
  history_.add(name, {std::move(next), history_.now().origin}, run);
  keepAside();
}

void Session::begin(const std::string& name, Document next, const std::string& path) {
  if (next == document() && path == this->path()) return;
  origins_.push_back({path, next});
  history_.add(name, {std::move(next), static_cast<int>(origins_.size()) - 1});
  keepAside();
}

void Session::saved(const std::string& path) {
  // Whatever was open from this file before is compared with what is in it now.
  for (Origin& other : origins_)
    if (other.path == path) other.basis = document();
  origins_[origin()] = {path, document()};
  history_.endRun();
  keepAside();
}

void Session::undo() {
  history_.undo();
  keepAside();
}

void Session::redo() {
  history_.redo();
  keepAside();
}

bool Session::recover(const std::string& text) {
  auto read = readDocument(text);
  if (!read) return false;
  const Document before = document();
  begin("Recovered knot", std::move(read->document));
  origins_.back().basis = before;
  keepAside();
  return true;
}

void Session::keepAside() {
  if (modified())
    recovery_.keep(documentText(document()));
  else
    recovery_.clear();
}

}  // namespace lorivan
