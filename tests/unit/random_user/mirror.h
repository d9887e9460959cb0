// A window that does nothing but show a document, to compare another with.
#pragma once

#include "unit/random_user/watched_platform.h"
#include "window/main_window.h"

namespace lorivan::random_user {

/// Its controls are in memory, its pictures of the sort and the size that the other window has.
class Mirror {
 public:
  Mirror(Platform& painter, std::string_view language) : painter_(painter) {
    platform_.memory.userLanguage = language;
    platform_.answer = [](const AskedDialog& asked) {
      return DialogQueue::Answer{asked.kind, {}, {}, false};
    };
    opened_ = static_cast<bool>(main_.open());
  }

  /// Shows the document as a window does that has just been opened with it.
  void show(const Document& document, Window& other, bool drawn, bool drawAtOnce) {
    for (const ControlId picture : {controlId("picGrid"), controlId("picKnot"), controlId("picShape")}) {
      const Surface& like = other.surface(picture);
      std::unique_ptr<Surface>& own = window().pictures[picture];
      if (own && own->width() == like.width()) continue;
      own = std::move(*painter_.createSurface(like.width(), like.height()));
    }
    bench().drawAtOnce = drawAtOnce;
    Document still = document;
    still.fields.check(Check::Animate) = false;  // nobody waits for an animation here
    bench().session.begin("", still);
    bench().show(drawn ? After::draw : After::grid);
    bench().session.begin("", document);
    bench().show(After::nothing);
  }

  bool opened() const { return opened_; }
  Workbench& bench() { return main_.bench(); }
  WatchedWindow& window() { return *platform_.window; }

 private:
  Platform& painter_;
  WatchedPlatform platform_{std::make_unique<NonePlatform>()};
  MainWindow main_{platform_, {}};
  bool opened_ = false;
};

}  // namespace lorivan::random_user
