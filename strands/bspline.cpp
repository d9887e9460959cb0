#include "strands/bspline.h"

namespace lorivan {

BsplineTable::BsplineTable(int order, int samples)
    : order_(order), samples_(samples), weights_(static_cast<std::size_t>(order) * samples, 0.0) {
  for (int phase = 0; phase < samples; ++phase) {
    double* b = &weights_[static_cast<std::size_t>(phase) * static_cast<std::size_t>(order)];
    const double u = static_cast<double>(phase) / samples;
    b[0] = 1;  // order 1 is 1 on [0, 1)
    for (int m = 2; m <= order; ++m)
      for (int j = m - 1; j >= 0; --j) {
        const double here = j < m - 1 ? (u + j) * b[j] : 0;
        const double before = j > 0 ? (m - u - j) * b[j - 1] : 0;
        b[j] = (here + before) / (m - 1);
      }
  }
}

}  // namespace lorivan
