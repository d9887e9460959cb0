#include "cli/batch.h"

#include <algorithm>

#include "base/numbers.h"

namespace lorivan {
namespace {

constexpr std::uint64_t kSheetOfItsOwn = 12;  // random knots where a sheet is all that is asked for

void addCaption(std::string& caption, std::string_view what, const std::string& value) {
  if (!caption.empty()) caption += ", ";
  caption += what;
  if (!what.empty()) caption += ' ';
  caption += value;
}

}  // namespace

std::uint64_t Batch::seedCount() const {
  if (line_.lastSeed) return *line_.lastSeed - seed_ + 1;
  return line_.seedsVary() ? kSheetOfItsOwn : 1;
}

std::size_t Batch::count() const {
  std::size_t count = seedCount();
  for (const Sweep& sweep : line_.sweeps) count *= sweep.values.size();
  return count;
}

Member Batch::member(std::size_t number) const {
  Member member;
  std::vector<std::size_t> places(line_.sweeps.size());
  for (std::size_t i = places.size(); i-- > 0; number /= line_.sweeps[i].values.size())
    places[i] = number % line_.sweeps[i].values.size();
  if (line_.random) member.seed = seed_ + number;
  if (line_.seedsVary()) {
    member.numbers.push_back(std::to_string(seed_ + number));
    addCaption(member.caption, "", member.numbers.back());
  }
  for (std::size_t i = 0; i < places.size(); ++i) {
    const Sweep& sweep = line_.sweeps[i];
    member.numbers.push_back(sweep.values[places[i]]);
    member.values.emplace_back(sweep.field, member.numbers.back());
    addCaption(member.caption, parameterSpec(sweep.field).caption, member.numbers.back());
  }
  return member;
}

int Batch::columns() const {
  const bool two = line_.sweeps.size() + (line_.seedsVary() ? 1 : 0) == 2;
  return two ? static_cast<int>(line_.sweeps.back().values.size()) : 0;
}

}  // namespace lorivan
