#include "window/session.h"

#include <utility>

#include "base/sink.h"
#include "base/texts.h"
#include "design/document_text.h"

namespace lorivan {

Session::Session(Platform& platform, Document floor)
    : history_({floor, std::make_shared<Origin>(Origin{{}, std::move(floor)})}),
      origins_{history_.now().origin},
      recovery_(platform) {}

void Session::step(const std::string& name, Document next, std::string_view run) {
  const bool joins = !run.empty() && history_.undoName() == name && run == run_;
  history_.add(name, {std::move(next), history_.now().origin, onSheet_}, run);
  run_ = run;
  // The moves of one drag are one step: the first of them is kept, and the last at its end.
  if (!joins) keepAside();
}

const std::string& Session::caption() const {
  const Origin& origin = *history_.now().origin;
  return origin.caption.empty() ? origin.path : origin.caption;
}

void Session::endRun() {
  history_.endRun();
  if (run_.empty()) return;
  run_.clear();
  keepAside();
}

void Session::begin(const std::string& name, Document next, const std::string& path) {
  if (next == document() && path == this->path()) return;
  // What was changed and saved nowhere stays so in a knot that goes on from it.
  const bool unsaved = path.empty() && modified();
  const auto origin = std::make_shared<Origin>(
      Origin{path, unsaved ? history_.now().origin->basis : next, extensionOf(path) == kKnotFileExtension});
  std::erase_if(origins_, [](const auto& other) { return other.expired(); });
  origins_.push_back(origin);
  history_.add(name, {std::move(next), origin, onSheet_});
  keepAside();
}

void Session::saved(const std::string& path) {
  // Whatever was open from this file before is compared with what is in it now.
  for (const auto& known : origins_)
    if (const auto other = known.lock(); other && other->path == path) other->basis = document();
  *history_.now().origin = {path, document()};
  history_.endRun();
  run_.clear();
  keepAside();
}

bool Session::undo() {
  const bool fromSheet = history_.canUndo() && history_.now().fromSheet;
  run_.clear();
  history_.undo();
  keepAside();
  return fromSheet;
}

void Session::redo() {
  run_.clear();
  history_.redo();
  keepAside();
}

bool Session::recover(const std::string& text) {
  auto read = readDocument(text);
  if (!read) return false;
  const Document before = document();
  begin(tr("Recovered knot"), std::move(read->document));
  history_.now().origin->basis = before;
  keepAside();
  return true;
}

void Session::keepAside() {
  // A knot that was only made is not modified, but nowhere else either.
  if (modified() || !history_.now().origin->isStored)
    recovery_.keep(documentText(document()));
  else
    recovery_.clear();
}

}  // namespace lorivan
