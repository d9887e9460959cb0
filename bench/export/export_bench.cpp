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
  const ExportFormat& format = exportFormats()[state.range(0)];
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
    const CopyRatio ratio(state, sink.used);
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

/// Writes a file as the program does, on the disk under its own name at the end.
template <class Write>
bool makeFile(const std::string& path, const Write& write) {
  const auto sink = FileSink::create(path);
  return sink && write(**sink) && (*sink)->commit();
}

/// Argument: whether the file is copied, in memory already, instead of made.
void millionToDisk(benchmark::State& state) {
  SampleKnot knot;
  knot.model = torus(7.5F, 2, 9900, 98);
  ExportScene scene = knot.scene();
  scene.binary = true;
  const ExportFormat& stl = *findFormat("stl", DxfKind::faces);
  MemorySink whole;
  if (!stl.write(scene, whole)) state.SkipWithError("not written");
  const std::string path = "lorivan-bench.stl";
  const CopyRatio ratio(state, whole.bytes.size());
  for (auto _ : state) {
    const bool made = state.range(0) != 0
                          ? makeFile(path, [&](Sink& sink) { return sink.write(whole.bytes); })
                          : makeFile(path, [&](Sink& sink) { return bool(stl.write(scene, sink)); });
    if (!made) state.SkipWithError("not written");
  }
  removeFile(path);
  state.SetBytesProcessed(static_cast<std::int64_t>(whole.bytes.size()) * state.iterations());
  state.SetLabel(state.range(0) != 0 ? "copied" : "written");
}
BENCHMARK(millionToDisk)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/// How cost grows with the model. Argument: quads.
void writeGrown(benchmark::State& state) {
  SampleKnot knot;
  knot.model = torus(7.5F, 2, static_cast<int>(state.range(0) / 100), 100);
  ExportScene scene = knot.scene();
  const ExportFormat& stl = *findFormat("stl", DxfKind::faces);
  ReusedSink sink;
  if (!stl.write(scene, sink)) state.SkipWithError("not written");
  const CopyRatio ratio(state, sink.used);
  for (auto _ : state) {
    sink.used = 0;
    benchmark::DoNotOptimize(stl.write(scene, sink));
  }
}
BENCHMARK(writeGrown)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Arg(990'000)->Unit(benchmark::kMillisecond);

BENCHMARK(writeMillion)->Apply(everyMesh)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lorivan
