// A million polygons to memory, in every format that writes them.
#include "copy_ratio.h"
#include "export/formats.h"
#include "export/height_map.h"
#include "export/mesh.h"
#include "unit/export/sample_knots.h"

namespace lorivan {
namespace {

/// Keeps its memory from one writing to the next, so that the writer is measured and not the system's pages.
class ReusedSink final : public Sink {
 public:
  bool write(std::string_view more) override {
    if (bytes.size() < used + more.size()) bytes.resize((used + more.size()) * 2);
    std::memcpy(bytes.data() + used, more.data(), more.size());
    used += more.size();
    return true;
  }
  std::vector<char> bytes;
  std::size_t used = 0;
};

enum Kind : std::int64_t { plain, binary, shared };

void writeMillion(benchmark::State& state) {
  const ExportFormat& format = exportFormats()[static_cast<std::size_t>(state.range(0))];
  SampleKnot knot;
  knot.model = torus(7.5F, 2, 9900, 98);
  ExportScene scene = knot.scene();
  scene.povTemplate = "";
  scene.binary = state.range(1) == binary;
  scene.shared = state.range(1) == shared;
  ReusedSink sink;
  if (!format.write(scene, sink)) state.SkipWithError("not written");
  std::size_t bytes = 0;
  {
    const CopyRatio ratio(state);
    for (auto _ : state) {
      sink.used = 0;
      if (!format.write(scene, sink)) state.SkipWithError("not written");
      bytes += sink.used;
    }
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes));
  state.counters["megabytes"] = static_cast<double>(sink.used) / 1e6;
  state.SetLabel(std::string(format.identifier) + (scene.binary   ? ", binary"
                                                   : scene.shared ? ", shared corners"
                                                                  : ""));
}

void everyMesh(benchmark::internal::Benchmark* bench) {
  for (std::size_t i = 0; i < exportFormats().size(); ++i) {
    const ExportFormat& format = exportFormats()[i];
    if (format.write != nullptr && format.identifier != "dxf2d" && format.identifier != "pov")
      bench->Args({static_cast<std::int64_t>(i), plain});
    if (format.identifier == "stl") bench->Args({static_cast<std::int64_t>(i), binary});
    if (format.identifier == "obj") bench->Args({static_cast<std::int64_t>(i), shared});
  }
}
/// The part of every mesh format that is before its writing.
void meshOfMillion(benchmark::State& state) {
  const TubeModel model = torus(7.5F, 2, 9900, 98);
  const CopyRatio ratio(state);
  for (auto _ : state) benchmark::DoNotOptimize(TubeMesh(model, 1).points().data());
}
BENCHMARK(meshOfMillion)->Unit(benchmark::kMillisecond);

void reliefOfMillion(benchmark::State& state) {
  const TubeModel model = torus(7.5F, 2, 9900, 98);
  const CopyRatio ratio(state);
  for (auto _ : state) benchmark::DoNotOptimize(heightMapOf(model, 1000, SamplesAt::middles)->top);
}
BENCHMARK(reliefOfMillion)->Unit(benchmark::kMillisecond);

BENCHMARK(writeMillion)->Apply(everyMesh)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lorivan
