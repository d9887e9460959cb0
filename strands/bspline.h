// Uniform B-spline weights, tabulated once so that sampling a curve is a short weighted sum.
#pragma once

#include <vector>

namespace lorivan {

/// Weights of the uniform B-spline basis of one order with knot spacing 1 (Cox-de Boor recursion), for a
/// fixed number of equally spaced samples between two knots.
class BsplineTable {
 public:
  /// `order` is the degree plus one, at least 1; `samples` is the number of samples for each knot interval.
  BsplineTable(int order, int samples);

  int order() const { return order_; }
  int samples() const { return samples_; }

  /// The weights of one phase: entry j is the basis function's value at phase / samples + j, the weight of
  /// the control point j places before the sample's interval. `order` entries; they sum to 1.
  const double* weights(int phase) const {
    return &weights_[static_cast<std::size_t>(phase) * static_cast<std::size_t>(order_)];
  }

 private:
  int order_, samples_;
  std::vector<double> weights_;
};

}  // namespace lorivan
