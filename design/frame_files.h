// The animation as numbered pictures.
#pragma once

#include <string>

#include "design/outputs.h"
#include "strands/animation.h"

namespace lorivan {

/// A file name with a place for a number: "frame-%03d.png", "%d.bmp".
struct FrameNames {
  std::string before, after;
  int digits = 0;  // filled up with zeros; 0 as for "%d": as many as the number has

  std::string name(int number) const;
  /// The largest number that keeps all names equally long, at most 9999; also 9999 for "%d".
  int most() const;
};

/// Only the file name's own part is looked at, not its folder. The error is one sentence.
Result<FrameNames> parseFrameNames(const std::string& pattern);

/// Makes the frames of one animation. The job must outlive it.
class FrameMaker {
 public:
  /// As many frames as the animation has steps. When that is more than `most`, every second, third ... step
  /// is made, and always the last.
  FrameMaker(const OutputJob& job, int most);

  int count() const;
  /// Steps from one frame to the next.
  int stride() const { return stride_; }
  /// The bytes of frame `number`, from 1 to count().
  Result<std::string> make(int number, PictureFormat format) const;

 private:
  const OutputJob& job_;
  std::vector<AnimationStep> steps_;
  int stride_ = 1;
};

}  // namespace lorivan
