#include "platform/qt/look.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QFont>
#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QScreen>
#include <QStyleFactory>
#include <QStyleOptionButton>
#include <QTimer>
#include <QWidget>
#include <algorithm>

#include "platform/common/layout.h"

/// Outside of any namespace, as the resource compiler wants it: a static library's resources are not found
/// by themselves.
static void initResources() { Q_INIT_RESOURCE(lorivan); }

namespace lorivan {
namespace {

/// The colours of one look, 0xRRGGBB.
struct Tints {
  QRgb window, base, alternate, button, text, faint, border, accent, onAccent, tip, tipText;
};

constexpr Tints kLight = {0xF2F3F5, 0xFFFFFF, 0xFAFAFB, 0xFCFCFD, 0x1F2328, 0x9299A1,
                          0xC9CED5, 0x1F7A63, 0xFFFFFF, 0xFFFFFF, 0x1F2328};
constexpr Tints kDark = {0x30343B, 0x1D2025, 0x363B43, 0x434952, 0xE6E9EC, 0x858D97,
                         0x4D545E, 0x48B394, 0x0F1512, 0x434952, 0xE6E9EC};

// For people who ask their desktop for high contrast: every text and every border stands out, also of what
// cannot be used.
constexpr Tints kLightContrast = {0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0x000000, 0x595959,
                                  0x000000, 0x00429B, 0xFFFFFF, 0xFFFFFF, 0x000000};
constexpr Tints kDarkContrast = {0x000000, 0x000000, 0x000000, 0x000000, 0xFFFFFF, 0xB0B0B0,
                                 0xFFFFFF, 0xFFFF00, 0x000000, 0x000000, 0xFFFFFF};

QPalette paletteOf(const Tints& t) {
  QPalette palette(QColor(t.button), QColor(t.window));
  using Role = QPalette::ColorRole;
  const std::pair<Role, QRgb> roles[] = {{QPalette::Window, t.window},
                                         {QPalette::WindowText, t.text},
                                         {QPalette::Base, t.base},
                                         {QPalette::AlternateBase, t.alternate},
                                         {QPalette::Text, t.text},
                                         {QPalette::Button, t.button},
                                         {QPalette::ButtonText, t.text},
                                         {QPalette::BrightText, t.text},
                                         {QPalette::Highlight, t.accent},
                                         {QPalette::HighlightedText, t.onAccent},
                                         {QPalette::Link, t.accent},
                                         {QPalette::LinkVisited, t.accent},
                                         {QPalette::ToolTipBase, t.tip},
                                         {QPalette::ToolTipText, t.tipText},
                                         {QPalette::PlaceholderText, t.faint},
                                         {QPalette::Mid, t.border}};
  for (const auto& [role, colour] : roles) palette.setColor(role, QColor(colour));
  for (const Role role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, QColor(t.faint));
  palette.setColor(QPalette::Disabled, QPalette::Base, QColor(t.window));
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(t.border));
  return palette;
}

/// The desktop's settings service, and the settings of it that are asked for.
struct ColourService {
  QString name = QStringLiteral("org.freedesktop.portal.Desktop");
  QString path = QStringLiteral("/org/freedesktop/portal/desktop");
  QString interface = QStringLiteral("org.freedesktop.portal.Settings");
  QString section = QStringLiteral("org.freedesktop.appearance");
  QString dark = QStringLiteral("color-scheme"), contrast = QStringLiteral("contrast");
  bool exists = !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS");
};

/// Whether the service says yes, which is 1; false where there is none.
bool serviceSays(const QString& key) {
  const ColourService service;
  if (!service.exists) return false;
  QDBusMessage ask =
      QDBusMessage::createMethodCall(service.name, service.path, service.interface, QStringLiteral("Read"));
  ask << service.section << key;
  const QDBusMessage answer = QDBusConnection::sessionBus().call(ask, QDBus::Block, 300);
  if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) return false;
  QVariant value = answer.arguments().constFirst();
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value.toUInt() == 1;
}

bool wantsContrast() {
  return qEnvironmentVariable("GTK_THEME").startsWith(QStringLiteral("HighContrast")) ||
         serviceSays(ColourService().contrast);
}

void followService(QApplication& application) {
  const ColourService service;
  if (!service.exists) return;
  auto* const soon = new QTimer(&application);
  soon->setSingleShot(true);
  QObject::connect(soon, &QTimer::timeout,
                   [service] { applyColours(serviceSays(service.dark), wantsContrast()); });
  for (const QString& key : {service.dark, service.contrast})
    QDBusConnection::sessionBus().connect(service.name, service.path, service.interface,
                                          QStringLiteral("SettingChanged"), {service.section, key}, QString(),
                                          soon, SLOT(start()));
}

bool isDesktopDark() {
  if (QApplication::palette().color(QPalette::Window).lightness() < 128) return true;
  const QString theme = qEnvironmentVariable("GTK_THEME");
  return theme.endsWith(QStringLiteral("dark"), Qt::CaseInsensitive) ||
         theme.endsWith(QStringLiteral("Inverse")) || serviceSays(ColourService().dark);
}

/// The system's font, in a size at which the whole form fits the screen.
QFont fittingFont(QFont font) {
  const QScreen* const screen = QApplication::primaryScreen();
  const QSize room = screen ? screen->availableSize() : QSize(1280, 800);
  const double dpi = screen ? screen->logicalDotsPerInchY() : 96;
  const int system = font.pixelSize() > 0 ? font.pixelSize() : qRound(font.pointSizeF() * dpi / 72);
  const int most = std::max(kLeastFont, std::min(room.width() / 72, room.height() / 50));
  font.setPixelSize(std::min(std::max(system, 12), most));
  return font;
}

/// Borders take their colour from the window's, a little darker, which high contrast has no use for: there
/// everything that can be used gets a whole border, and what has the focus a thick one.
void drawBorder(const QStyleOption& option, QPainter& painter) {
  const auto colour = [&](QPalette::ColorRole role) { return option.palette.color(QPalette::Active, role); };
  if (colour(QPalette::Mid) != colour(QPalette::WindowText)) return;
  const bool focused = (option.state & QStyle::State_HasFocus) != 0;
  painter.setPen(QPen(colour(focused ? QPalette::Highlight : QPalette::Mid), focused ? 3 : 1));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5));
}

/// Plain buttons in dialogs, and lists that drop down.
class Style final : public QProxyStyle {
 public:
  Style() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* more) const override {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons || hint == SH_ComboBox_Popup) return 0;
    return QProxyStyle::styleHint(hint, option, widget, more);
  }
  /// Boxes and radios are as large as their texts.
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
    const int usual = QProxyStyle::pixelMetric(metric, option, widget);
    const bool indicator = metric == PM_IndicatorWidth || metric == PM_IndicatorHeight ||
                           metric == PM_ExclusiveIndicatorWidth || metric == PM_ExclusiveIndicatorHeight;
    return indicator && widget ? std::max(usual, widget->fontMetrics().ascent() + 1) : usual;
  }
  /// Boxes and radios take their border from the window's colour, a little darker: on a dark one it is not
  /// seen.
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    const bool indicator = element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton;
    const bool bordered =
        element == PE_FrameLineEdit || element == PE_PanelButtonCommand || element == PE_IndicatorCheckBox;
    drawUsual(element, indicator, option, painter, widget);
    if (bordered) drawBorder(*option, *painter);
  }
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox) drawBorder(*option, *painter);
  }

 private:
  void drawUsual(PrimitiveElement element, bool indicator, const QStyleOption* option, QPainter* painter,
                 const QWidget* widget) const {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (!indicator || !button || button->palette.color(QPalette::Window).lightness() >= 128)
      return QProxyStyle::drawPrimitive(element, option, painter, widget);
    QStyleOptionButton bright = *button;
    bright.palette.setColor(QPalette::Window, button->palette.color(QPalette::PlaceholderText).lighter(130));
    QProxyStyle::drawPrimitive(element, &bright, painter, widget);
  }
};

}  // namespace

void applyColours(bool dark, bool contrast) {
  const Tints& usual = dark ? kDark : kLight;
  const Tints& strong = dark ? kDarkContrast : kLightContrast;
  QApplication::setPalette(paletteOf(contrast ? strong : usual));
}

void applyLook(QApplication& application, bool dark, bool contrast) {
  QApplication::setStyle(new Style);
  applyColours(dark, contrast);
  application.setFont(fittingFont(application.font()));
  initResources();
  QApplication::setWindowIcon(QIcon(QStringLiteral(":/lorivan.ico")));
  QGuiApplication::setDesktopFileName(QStringLiteral("lorivan"));
}

void applyLook(QApplication& application) {
  applyLook(application, isDesktopDark(), wantsContrast());
  followService(application);
}

}  // namespace lorivan
