// The widgets of the form table, placed by the common layout.
#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>
#include <map>
#include <set>
#include <span>
#include <vector>

#include "platform/common/layout.h"
#include "platform/qt/list_pictures.h"
#include "platform/qt/widgets.h"
#include "platform/window.h"

class QButtonGroup;
class QComboBox;
class QLabel;

namespace lorivan {

/// What a form tells its window: the control, and what happened to it.
struct FormEvents {
  std::function<void(ControlId)> confirmed, left, escaped, clicked, changed, resized, pointed;
  std::function<void(ControlId, int)> stepped;
  std::function<void(ControlId, const MouseEvent&)> mouse;
  std::function<bool(const KeyEvent&)> key;
};

class FormQt final : public QWidget {
 public:
  FormQt(std::span<const ControlSpec> controls, FormEvents events, QWidget* parent);

  std::string text(ControlId control) const;
  void setText(ControlId control, const std::string& text);
  bool checked(ControlId control) const;
  void setChecked(ControlId control, bool on);
  void setColours(ControlId control, Colour background, Colour text);
  void setItemPictures(ControlId control, const std::vector<ItemPicture>& pictures);
  QWidget* widget(ControlId control) const;
  /// Null when the control is of another kind.
  QComboBox* list(ControlId control) const;
  PictureView* picture(ControlId control) const;

  /// Tells that an entry is confirmed: one that was left, or the one with the focus when something waits in
  /// it.
  void confirmPending();
  void setFocusTo(ControlId control);
  /// -1: none.
  ControlId focused() const;
  /// Before a control is disabled or hidden: leaves its focus to the picture, or to the form itself.
  void passFocusOn(ControlId control);
  /// Has pictures painted that were drawn on.
  void showDrawn();
  /// Places everything anew, in device pixels of the screen that the form is on.
  void place();
  QSize minimumClientSize() const;
  QSize referenceClientSize() const;
  double scaling() const;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* make(ControlId id);
  QWidget* makeButton(ControlId id);
  QWidget* makeToggle(ControlId id);
  QWidget* makeField(ControlId id);
  QWidget* makeLabel(ControlId id);
  void flatten(QWidget& text) const;
  void connectLabels();
  LayoutMetrics metrics(const QFont& font) const;
  void fitFont(int clientWidth, int clientHeight);
  QSize toLogical(LayoutSize size) const;
  bool postpone(NumberEdit& left);
  void fitLists();
  void tellPointed(const QWidget* watched, const QEvent& event);
  static bool isForEntry(QObject* watched, const QKeyEvent& key);

  std::span<const ControlSpec> controls_;
  FormEvents events_;
  std::vector<QWidget*> widgets_;
  std::map<std::string_view, QButtonGroup*> radios_;
  std::set<const QWidget*> coloured_;  // by the program
  ListPictures listPictures_;
  QRect pictureFrame_;
  QTimer afterRelease_;
  NumberEdit* left_ = nullptr;  // left for a button that is still held down; not confirmed yet
};

}  // namespace lorivan
