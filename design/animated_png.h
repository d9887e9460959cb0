// PNG pictures that move: the frames of an animation in one file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/result.h"

namespace lorivan {

/// Puts PNG files of one size and one kind of pixels together.
class AnimatedPng {
 public:
  /// `still` is the file's own picture, with its texts: what programs show that know nothing of animations.
  /// `loop`: for ever, else once.
  AnimatedPng(std::string still, bool loop) : still_(std::move(still)), loop_(loop) {}

  /// A frame that stays for so many milliseconds. The error: it does not go with the still picture.
  Status add(std::string_view png, int milliseconds);
  /// The whole file; at least one frame must have come.
  Result<std::string> finish() const;

 private:
  std::string still_;
  bool loop_;
  std::string frames_;          // their chunks
  std::uint32_t count_ = 0;     // frames
  std::uint32_t sequence_ = 0;  // chunks of frames
};

}  // namespace lorivan
