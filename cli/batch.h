// The knots that one run makes: usually one, with ranges many.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/command_line.h"

namespace lorivan {

/// What one of many knots has of its own.
struct Member {
  std::vector<std::string> numbers;  // for the places of its files' names
  std::string caption;               // "7", "Swish 10, X 4"; empty for the only knot of a run
  std::optional<std::uint64_t> seed;
  std::vector<std::pair<Param, std::string>> values;
};

class Batch {
 public:
  /// `seed` is the one that random knots begin with. The command line must outlive the batch.
  Batch(const CommandLine& line, std::uint64_t seed) : line_(line), seed_(seed) {}

  std::size_t count() const;
  /// The seeds run first and slowest, then the fields in their order.
  Member member(std::size_t number) const;
  /// Columns of a contact sheet: a row for each value where two things vary; 0 where that is open.
  int columns() const;

 private:
  std::uint64_t seedCount() const;

  const CommandLine& line_;
  std::uint64_t seed_;
};

}  // namespace lorivan
