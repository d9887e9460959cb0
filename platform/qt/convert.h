// Small conversions between the contracts' types and Qt's.
#pragma once

#include <QColor>
#include <QString>
#include <string>
#include <string_view>

#include "base/colour.h"

namespace lorivan {

inline QColor toQColor(Colour c) { return {redOf(c), greenOf(c), blueOf(c)}; }
inline Colour toColour(const QColor& c) { return makeColour(c.red(), c.green(), c.blue()); }

inline QString toQString(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}
inline std::string toUtf8(const QString& text) { return text.toStdString(); }

}  // namespace lorivan
