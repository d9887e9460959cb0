#include "platform/qt/accessible.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "platform/qt/widgets.h"

namespace lorivan {
namespace {

QAccessibleInterface* roleOf(const QString& /*className*/, QObject* object) {
  if (auto* const picture = dynamic_cast<PictureView*>(object))
    return new QAccessibleWidget(picture, QAccessible::Canvas);
  if (auto* const group = dynamic_cast<GroupFrame*>(object))
    return new QAccessibleWidget(group, QAccessible::Grouping);
  return nullptr;
}

}  // namespace

void nameRoles() { QAccessible::installFactory(roleOf); }

}  // namespace lorivan
