// 3MF (3D Manufacturing Format, core specification 1.2.3): millimetres, one object for each strand with its
// colour, all of them components of one object, so that nobody moves them apart by mistake.
#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "base/checksum.h"
#include "base/escaped_text.h"
#include "export/line_reader.h"
#include "export/read_back.h"
#include "export/text_out.h"
#include "export/writers.h"
#include "export/zip.h"

namespace lorivan {
namespace {

constexpr std::string_view kModelName = "3D/3dmodel.model";
/// Readers find it through its relationship. Some take every PNG with "thumbnail" in its name for a texture
/// of the model, and fall over it.
constexpr std::string_view kThumbnailName = "Metadata/preview.png";
constexpr std::string_view kSourceName = "Metadata/knot.txt";
constexpr std::string_view kPackage = "http://schemas.openxmlformats.org/package/2006/";
constexpr std::string_view kCore = "http://schemas.microsoft.com/3dmanufacturing/";
constexpr std::string_view kXmlHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
constexpr std::string_view kVertexStart = "<vertex x=\"";
constexpr std::string_view kTriangleStart = "<triangle v1=\"";
constexpr std::size_t kElementRoom = 48 + 3 * kMostDigits;
constexpr int kMaterials = 1;    // number of the colours' resource
constexpr int kFirstObject = 2;  // of the strands'

std::string contentTypes() {
  const auto row = [](std::string_view extension, std::string_view type) {
    return "<Default Extension=\"" + std::string(extension) + "\" ContentType=\"" + std::string(type) +
           "\"/>\n";
  };
  return std::string(kXmlHead) + "<Types xmlns=\"" + std::string(kPackage) + "content-types\">\n" +
         row("rels", "application/vnd.openxmlformats-package.relationships+xml") +
         row("model", "application/vnd.ms-package.3dmanufacturing-3dmodel+xml") + row("png", "image/png") +
         row("txt", "text/plain") + "</Types>\n";
}

std::string relationships(bool thumbnail) {
  const auto row = [](std::string_view id, std::string_view target, const std::string& type) {
    return "<Relationship Id=\"" + std::string(id) + "\" Target=\"/" + std::string(target) + "\" Type=\"" +
           type + "\"/>\n";
  };
  std::string out = std::string(kXmlHead) + "<Relationships xmlns=\"" + std::string(kPackage) +
                    "relationships\">\n" + row("model", kModelName, std::string(kCore) + "2013/01/3dmodel");
  if (thumbnail)
    out += row("thumbnail", kThumbnailName, std::string(kPackage) + "relationships/metadata/thumbnail");
  return out + "</Relationships>\n";
}

/// "#RRGGBB".
std::string colourText(const std::array<float, 3>& factors) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string out = "#";
  for (const float factor : factors) {
    const auto value = static_cast<std::size_t>(std::clamp(factor, 0.F, 1.F) * 255 + 0.5F);
    out += digits[value / 16];
    out += digits[value % 16];
  }
  return out;
}

std::string modelHead(const ExportScene& scene, const std::vector<MeshPart>& parts) {
  std::string out = std::string(kXmlHead) + "<model unit=\"millimeter\" xml:lang=\"en-GB\" xmlns=\"" +
                    std::string(kCore) + "core/2015/02\">\n";
  if (!scene.title.empty()) out += "<metadata name=\"Title\">" + xmlText(scene.title) + "</metadata>\n";
  out += "<metadata name=\"Application\">Lorivan</metadata>\n<resources>\n<basematerials id=\"1\">\n";
  for (const MeshPart& part : parts)
    out += "<base name=\"" + part.name + "\" displaycolor=\"" + colourText(part.factors) + "\"/>\n";
  return out + "</basematerials>\n";
}

std::string modelEnd(const ExportScene& scene, std::size_t partCount) {
  const auto whole = std::to_string(kFirstObject + partCount);
  std::string out = "<object id=\"" + whole + "\" type=\"model\" name=\"" +
                    xmlText(scene.title.empty() ? "Knot" : scene.title) + "\">\n<components>\n";
  for (std::size_t i = 0; i < partCount; ++i)
    out += "<component objectid=\"" + std::to_string(kFirstObject + i) + "\"/>\n";
  return out + "</components>\n</object>\n</resources>\n<build>\n<item objectid=\"" + whole +
         "\"/>\n</build>\n</model>\n";
}

void writeObject(TextOut& out, const MeshPart& part, std::size_t number, const MeshPoint& origin) {
  out.text("<object id=\"" + std::to_string(kFirstObject + number) + "\" type=\"model\" name=\"" + part.name +
           "\" pid=\"" + std::to_string(kMaterials) + "\" pindex=\"" + std::to_string(number) +
           "\">\n<mesh>\n<vertices>\n");
  for (const MeshPoint& p : part.points) {
    char* at = putThousandths(putText(out.room(kElementRoom), kVertexStart), p.x - origin.x);
    at = putThousandths(putText(at, "\" y=\""), p.y - origin.y);
    at = putThousandths(putText(at, "\" z=\""), p.z - origin.z);
    out.take(putText(at, "\"/>\n"));
  }
  out.text("</vertices>\n<triangles>\n");
  eachTriangle(part, [&](std::uint32_t a, std::uint32_t b, std::uint32_t c) {
    char* at = putInteger(putText(out.room(kElementRoom), kTriangleStart), static_cast<std::int32_t>(a));
    at = putInteger(putText(at, "\" v2=\""), static_cast<std::int32_t>(b));
    at = putInteger(putText(at, "\" v3=\""), static_cast<std::int32_t>(c));
    out.take(putText(at, "\"/>\n"));
  });
  out.text("</triangles>\n</mesh>\n</object>\n");
}

/// The model's part of the archive, line by line.
class ModelScanner {
 public:
  bool take(std::string_view bytes) {
    crc_ = crc32(bytes, crc_);
    size_ += bytes.size();
    lines_.take(bytes, [this](std::string_view line) { takeLine(line); });
    return true;
  }
  FileFacts facts(const ZipEntry& entry) {
    if (crc_ != entry.crc || size_ != entry.rawSize || !ended_) gatherer_.facts.damaged = true;
    return gatherer_.facts;
  }

 private:
  void takeLine(std::string_view line) {
    if (line.starts_with(kVertexStart)) {
      MeshPoint p;
      if (!takeVertex(line.substr(kVertexStart.size()), p)) gatherer_.facts.damaged = true;
      gatherer_.sharedPoint(p);
      ++points_;
    } else if (line.starts_with(kTriangleStart)) {
      takeTriangle(line.substr(kTriangleStart.size()));
    } else if (line == "<vertices>") {
      points_ = 0;
      ++object_;
    }
    ended_ = line == "</model>";
  }

  static bool takeVertex(std::string_view text, MeshPoint& p) {
    for (std::int32_t* axis : {&p.x, &p.y, &p.z}) {
      if (axis != &p.x) text.remove_prefix(std::min<std::size_t>(text.size(), 5));
      if (!takeThousandths(text, *axis)) return false;
    }
    return true;
  }

  void takeTriangle(std::string_view text) {
    std::array<std::uint64_t, 3> corners{};
    for (std::size_t i = 0; i < 3; ++i) {
      std::uint32_t index = 0;
      if (i > 0) text.remove_prefix(std::min<std::size_t>(text.size(), 6));
      if (!takeIndex(text, index) || index >= points_) gatherer_.facts.damaged = true;
      corners[i] = object_ << 32 | index;
    }
    gatherer_.triangle(corners[0], corners[1], corners[2]);
  }

  LineReader lines_;
  FactsGatherer gatherer_;
  std::uint32_t crc_ = 0;
  std::uint64_t size_ = 0, object_ = 0, points_ = 0;
  bool ended_ = false;
};

class ThreeMfReader final : public MeshReader {
 public:
  bool take(std::string_view bytes) override {
    archive_ += bytes;
    return true;
  }
  FileFacts finish() override {
    FileFacts facts;
    facts.damaged = true;
    for (const ZipEntry& entry : zipEntries(archive_)) {
      ModelScanner scanner;
      if (entry.name == kModelName &&
          inflateRaw(entry.packed, [&](auto block) { return scanner.take(block); }))
        facts = scanner.facts(entry);
      else if (!entry.deflated && crc32(entry.packed) != entry.crc)
        facts.damaged = true;
    }
    return facts;
  }

 private:
  std::string archive_;
};

}  // namespace

std::unique_ptr<MeshReader> threeMfReader() { return std::make_unique<ThreeMfReader>(); }

Status writeThreeMf(const ExportScene& scene, Sink& sink) {
  auto parts = sceneParts(scene, kStandardMillimetres);
  if (!parts) return parts.error();
  if (!scene.relief) standUpright(*parts);
  const auto [low, high] = boxOf(*parts);
  if (std::max({static_cast<double>(high.x) - low.x, static_cast<double>(high.y) - low.y,
                static_cast<double>(high.z) - low.z}) > std::numeric_limits<std::int32_t>::max())
    return unwritable("the model is too large for the file");
  DeflateSink model(DeflateForm::raw, kFastDeflate);
  TextOut out(model);
  out.text(modelHead(scene, *parts));
  for (std::size_t i = 0; i < parts->size() && out.ok(); ++i) {
    writeObject(out, (*parts)[i], i, low);
    if (scene.progress) scene.progress(static_cast<double>(i + 1) / static_cast<double>(parts->size()));
  }
  out.text(modelEnd(scene, parts->size()));
  if (const Status done = out.finish(); !done) return done;
  if (!model.finish()) return unwritable("the file could not be deflated");
  ZipWriter zip(sink);
  zip.addStored("[Content_Types].xml", contentTypes());
  zip.addStored("_rels/.rels", relationships(!scene.thumbnail.empty()));
  if (!scene.thumbnail.empty()) zip.addStored(kThumbnailName, scene.thumbnail);
  if (!scene.source.empty()) zip.addStored(kSourceName, scene.source);
  zip.addDeflated(kModelName, model);
  if (!zip.finish()) return unwritable("the file could not be written completely");
  return checkWritten(sink, threeMfReader(), [&, origin = low] {
    return factsOf(*parts, [&](const MeshPoint& p) {
      return MeshPoint{p.x - origin.x, p.y - origin.y, p.z - origin.z};
    });
  });
}

}  // namespace lorivan
