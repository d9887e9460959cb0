// Files read back before they take their names: what a mesh file holds, against what it should hold.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

#include "base/sink.h"
#include "export/mesh_part.h"

namespace lorivan {

/// What can be told of a mesh while its file streams by, in thousandths of the file's unit.
struct FileFacts {
  std::size_t triangles = 0;
  std::size_t points = 0;    // 0 where the format repeats them
  std::uint64_t places = 0;  // sum of all points, hashed; 0 where the format repeats them
  MeshBox box;
  std::uint64_t open = 0;  // 0 when every edge is passed as often one way as the other
  bool damaged = false;    // something is there that its writer does not write
};

/// What the files of these meshes must hold. A format may round points or move them.
FileFacts factsOf(const std::vector<MeshPart>& parts,
                  const std::function<MeshPoint(const MeshPoint&)>& asWritten = {});
FileFacts factsOf(const TubeMesh& mesh);

/// Gathers facts. Corners are known by any number that is the same for the same corner: an index, or what is
/// hashed from a position.
class FactsGatherer {
 public:
  void point(const MeshPoint& p);        // that triangles repeat
  void sharedPoint(const MeshPoint& p);  // that triangles point to
  void triangle(std::uint64_t a, std::uint64_t b, std::uint64_t c);
  /// The same for corners whose numbers are spread over 64 bits, as hashOf() leaves them.
  void hashedTriangle(std::uint64_t a, std::uint64_t b, std::uint64_t c);

  FileFacts facts;

 private:
  bool any_ = false;
};

/// Takes a file in blocks.
class MeshReader {
 public:
  virtual ~MeshReader() = default;
  /// False when the rest need not be read: the file is no such file.
  virtual bool take(std::string_view bytes) = 0;
  virtual FileFacts finish() = 0;
};

std::unique_ptr<MeshReader> binaryStlReader();
std::unique_ptr<MeshReader> textStlReader();
std::unique_ptr<MeshReader> objReader();  // with shared corners
std::unique_ptr<MeshReader> glbReader();
std::unique_ptr<MeshReader> threeMfReader();

/// Reads the file again where the sink can, and fails when it is not as `expected` says.
Status checkWritten(Sink& sink, std::unique_ptr<MeshReader> reader,
                    const std::function<FileFacts()>& expected);

}  // namespace lorivan
