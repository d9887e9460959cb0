#include "strands/animated_svg.h"

#include "strands/band_painter.h"
#include "strands/svg_surface.h"

namespace lorivan {
namespace {

constexpr int kRestSteps = 5;

/// Names the groups as a still picture does, one for each strand's part of either pass.
class StrandGroups {
 public:
  explicit StrandGroups(SvgSurface& surface) : surface_(surface) {}
  ~StrandGroups() { close(); }
  StrandGroups(const StrandGroups&) = delete;
  StrandGroups& operator=(const StrandGroups&) = delete;

  void enter(const AnimationStep& step) {
    const std::string pass = step.grows() ? "strands" : "over-crossings";
    const std::string part = (step.grows() ? "strand-" : "over-") + std::to_string(step.slot);
    if (part == part_) return;
    if (!part_.empty()) surface_.endGroup();
    if (pass != pass_ && !pass_.empty()) surface_.endGroup();
    if (pass != pass_) surface_.beginGroup(pass);
    surface_.beginGroup(part);
    pass_ = pass;
    part_ = part;
  }

 private:
  void close() {
    if (pass_.empty()) return;
    surface_.endGroup();
    surface_.endGroup();
  }

  SvgSurface& surface_;
  std::string pass_, part_;
};

}  // namespace

std::string animatedSvg(const KnotGraph& graph, const KnotCurve& curve, const KnotStyle& style,
                        const GridView& view, const AnimatedSvgOptions& options) {
  const auto steps = animationSteps(curve);
  SvgSurface surface(options.page);
  drawPictureGround(surface, graph, view, options.picture);
  const double stepSeconds = options.delay / 1000.0;
  const std::size_t all = steps.size() + (options.loop ? kRestSteps : 0);
  surface.setRound(static_cast<double>(all) * stepSeconds, options.loop);
  BandPainter painter(surface, curve, style, view);
  {
    const SeamClip clip(surface, seamOf(curve, view));
    StrandGroups groups(surface);
    double begin = 0;
    for (std::size_t i = 0; i < steps.size(); ++i) {
      const AnimationStep& step = steps[i];
      if (step.grows() && !step.closed) continue;
      const double end = static_cast<double>(i + 1) * stepSeconds;
      groups.enter(step);
      if (step.grows()) {
        surface.setMotion({SvgMotion::Kind::grow, begin, end});
        painter.strand(step.slot);
      } else {
        surface.setMotion({SvgMotion::Kind::appear, begin, end});
        painter.overRun(step.slot, step.run);
      }
      begin = end;
    }
  }
  return surface.finish();
}

}  // namespace lorivan
