// The animation as numbered pictures.
#pragma once

#include <string>

#include "design/numbered_name.h"
#include "design/outputs.h"
#include "strands/animation.h"

namespace lorivan {

/// A name with one place, for the number of the frame. The error is one sentence.
Result<NumberedName> parseFrameNames(const std::string& pattern);

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
