// The numeric entry field behind every knot parameter, apart from any widget: a text that corrects itself to
// a number within limits, and the history of what it held. A widget shows text(); the window hands over what
// was typed.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>

#include "base/colour.h"
#include "platform/services.h"

namespace lorivan {

/// What ChkNum gives for a text that is no number.
inline constexpr double kNotANumber = -9999.99;

/// Reads a number leniently: the first character that is no digit, whatever it is, stands for the decimal
/// point (1.5, 1,5 and 1x5 are the same); a second one makes it no number.
double ChkNum(std::string_view Text);

/// A text forced into a range.
struct RangeCheck {
  std::string text;
  bool inRange = false;  // the number itself is shown, neither a limit nor the fall-back
};

/// The range rule: Default when Text is no number, the text of the limit that it violates, or the number in
/// plain form. Limits and default come back trimmed, and are not checked against each other.
RangeCheck checkRange(std::string_view Text, std::string_view Default, std::string_view Min,
                      std::string_view Max);

/// A field's limits, as texts. What a newly placed field has, unless its owner says otherwise.
struct ValidTextLimits {
  std::string ValMin = "1";
  std::string ValMax = "100";
  std::string ValDefault = "1";
  std::string ValFormat = "0.0";  // kept for the owner; numbers are shown in plain form
};

class ValidText {
 public:
  using SecondsOfDay = std::function<float()>;

  /// `seconds` tells the seconds since midnight, for the history's time stamps. The history starts empty: the
  /// initial text is not recorded.
  ValidText(ValidTextLimits limits, std::string value, SecondsOfDay seconds);

  const std::string& Value() const { return text_; }
  /// Corrects the text. Raises no event.
  void setValue(std::string_view text) { text_ = ErrorCheck(text, ValDefault, ValMin, ValMax); }

  /// What the user has typed so far, not yet corrected.
  void type(std::string text) { text_ = std::move(text); }
  /// Enter: corrects the text, then raises Changed.
  void pressEnter();
  /// The field lost the focus: corrects the text, then does what Enter does.
  void leave();

  /// checkRange(), and a number in range that differs from the current entry is added to the history, unless
  /// UnDoing.
  std::string ErrorCheck(std::string_view Text, std::string_view Default, std::string_view Min,
                         std::string_view Max);

  /// Reads the text from the section "Global" and starts the history anew with it. Key is an application's
  /// name, a comma, two characters that separate and the setting's key ("Lorivan,  Width"); `settings` are
  /// that application's.
  void LoadVal(const Settings& settings, std::string_view Key);
  void SaveVal(Settings& settings, std::string_view Key) const;

  /// Corrects the text and starts the history anew with it.
  void start(std::string_view text);

  int UndoLevel() const { return undoLevel_; }
  /// Levels outside 0 to 20 are held in that range.
  void setUndoLevel(int level);
  /// Time of the current entry, seconds since midnight; negative once it was stepped back over.
  float UndoTime() const { return undoTimes_[index()]; }
  void setUndoTime(float seconds) { undoTimes_[index()] = seconds; }
  /// Text of the current entry.
  const std::string& UndoText() const { return undoTexts_[index()]; }
  void setUnDoing(bool on) { unDoing_ = on; }

  std::string ValMin, ValMax, ValDefault, ValFormat;
  bool ValEnabled = true;
  Colour ForeColor = 0x000000, BackColor = 0xFFFFFF;

  /// Raised after every confirmation, whether or not the text changed.
  std::function<void()> Changed;

 private:
  static constexpr int kLastLevel = 20;  // entries 0 to 20
  std::size_t index() const { return static_cast<std::size_t>(undoLevel_); }
  void record(const std::string& text);

  std::string text_;
  SecondsOfDay seconds_;
  std::array<std::string, kLastLevel + 1> undoTexts_;
  std::array<float, kLastLevel + 1> undoTimes_{};
  int undoLevel_ = 0;
  bool unDoing_ = false;
};

}  // namespace lorivan
