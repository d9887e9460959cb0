// AutoCAD DXF, the strands as flat polylines for cutting machines.
#include <algorithm>
#include <string>

#include "export/dxf.h"
#include "export/mesh.h"
#include "export/text_out.h"
#include "export/visible_curves.h"
#include "export/writers.h"

namespace lorivan {
namespace {

struct Extents {
  double left = 0, bottom = 0, right = 0, top = 0;
  bool empty = true;
  void add(const FlatPoint& p) {
    left = empty ? p.x : std::min(left, p.x), right = empty ? p.x : std::max(right, p.x);
    bottom = empty ? p.y : std::min(bottom, p.y), top = empty ? p.y : std::max(top, p.y);
    empty = false;
  }
  double furthest() const { return std::max(std::max(-left, right), std::max(-bottom, top)); }
};

Extents extentsOf(const std::vector<FlatLine>& lines) {
  Extents box;
  for (const FlatLine& line : lines)
    for (const FlatPoint& p : line.points) box.add(p);
  return box;
}

/// How much wider the drawn knot is than its lines. One that is wrapped is cut off at its seams.
double bandsBeside(const ExportScene& scene) { return scene.curve.wrap ? 0 : scene.bandWidth; }

/// Moves the lower left corner of the drawn knot, bands included, to the origin.
void moveToCorner(const ExportScene& scene, std::vector<FlatLine>& lines) {
  const GridBox curves = curveBox(scene.curve, static_cast<float>(kProportion));
  for (FlatLine& line : lines)
    for (FlatPoint& p : line.points) {
      p.x -= curves.left - bandsBeside(scene) / 2;
      p.y -= curves.bottom - scene.bandWidth / 2;
    }
}

/// Millimetres are the width of the drawn knot with its bands, as in the vector pictures: the lines in the
/// middle of the bands end half a band before it.
Result<double> scaleOf(const ExportScene& scene, const Extents& box) {
  double scale = 1;
  if (scene.millimetres) {
    if (!isWidth(*scene.millimetres)) return wrongUsage(kWidthOutOfRange);
    const GridBox curves = curveBox(scene.curve, 1);
    if (!(curves.right > curves.left)) return impossibleKnot("a knot without strands has no width to scale");
    scale = *scene.millimetres / (curves.right - curves.left + bandsBeside(scene));
  }
  if (!(box.furthest() * scale <= kMostCoordinate)) return unwritable("the knot is too large for the file");
  return scale;
}

/// A point as its text says it; z is unused.
MeshPoint textPoint(const FlatPoint& p, double scale) {
  return meshPoint({static_cast<float>(p.x * scale), static_cast<float>(p.y * scale), 0}, 1);
}

/// The line in thousandths, without points that repeat the one before.
std::vector<MeshPoint> textPoints(const FlatLine& line, double scale) {
  std::vector<MeshPoint> points;
  for (const FlatPoint& p : line.points) points.push_back(textPoint(p, scale));
  points.erase(std::unique(points.begin(), points.end()), points.end());
  while (line.closed && points.size() > 1 && points.back() == points.front()) points.pop_back();
  return points;
}

char* putPlanePoint(char* at, const MeshPoint& p) {
  at = putThousandths(putText(at, "10\r\n"), p.x);
  at = putThousandths(putText(at, "\r\n20\r\n"), p.y);
  return putText(at, kLineEnd);
}

void writeHeader(TextOut& out, const MeshPoint& low, const MeshPoint& high) {
  out.text("0\r\nSECTION\r\n2\r\nHEADER\r\n9\r\n$EXTMIN\r\n");
  out.take(putPlanePoint(out.room(64), low));
  out.text("9\r\n$EXTMAX\r\n");
  out.take(putPlanePoint(out.room(64), high));
  out.text("0\r\nENDSEC\r\n0\r\nSECTION\r\n2\r\nENTITIES\r\n");
}

void writePolyline(TextOut& out, int slot, int colour, bool closed, const std::vector<MeshPoint>& points) {
  const std::string layer = std::to_string(slot) + "Layer\r\n";
  out.text("0\r\nPOLYLINE\r\n8\r\n" + layer + "62\r\n" + std::to_string(colour) + "\r\n66\r\n1\r\n70\r\n" +
           (closed ? "1" : "0") + "\r\n40\r\n0.003\r\n41\r\n0.003\r\n");
  const std::string head = "0\r\nVERTEX\r\n8\r\n" + layer;
  for (const MeshPoint& p : points) out.take(putPlanePoint(putText(out.room(128), head), p));
  out.text("0\r\nSEQEND\r\n");
}

}  // namespace

Status writeDxf2D(const ExportScene& scene, Sink& sink) {
  if (scene.model.QuadCount > kMostQuads) return refused(kTooManyPolygonsExport);
  std::vector<FlatLine> lines =
      scene.fullyCrossed ? wholeCurves(scene.curve) : visibleCurves(scene.curve, scene.bandWidth);
  if (scene.cornerOrigin) moveToCorner(scene, lines);
  const Extents box = extentsOf(lines);
  const Result<double> scale = scaleOf(scene, box);
  if (!scale) return scale.error();
  TextOut out(sink);
  writeHeader(out, textPoint({box.left, box.bottom}, *scale), textPoint({box.right, box.top}, *scale));
  for (std::size_t i = 0; i < lines.size() && out.ok(); ++i) {
    const std::vector<MeshPoint> points = textPoints(lines[i], *scale);
    if (points.size() > 1)
      writePolyline(out, lines[i].slot, dxfColour(scene.colourNumber(lines[i].slot)), lines[i].closed,
                    points);
    out.reached(scene.progress, i, lines.size());
  }
  out.text("0\r\nENDSEC\r\n0\r\nEOF\r\n");
  return out.finish();
}

}  // namespace lorivan
