// One writer for each file that other tools read. A writer knows no window and no file name: it gets a scene
// and gives bytes, the same for the same scene everywhere; texts are ASCII with CR LF line ends, but for the
// parts of a 3MF.
//
// A failed writer may have written a part; its error is one of the messages in scene.h, says that the sink
// took no more, or that the file was read back and found damaged.
#pragma once

#include "base/sink.h"
#include "export/scene.h"

namespace lorivan {

Status writePov(const ExportScene& scene, Sink& sink);
Status writeVrml(const ExportScene& scene, Sink& sink);
Status writeObj(const ExportScene& scene, Sink& sink);  // also with shared corners
Status writeStl(const ExportScene& scene, Sink& sink);  // text or binary
Status writeThreeMf(const ExportScene& scene, Sink& sink);
Status writeGlb(const ExportScene& scene, Sink& sink);
Status writeXyz(const ExportScene& scene, Sink& sink);
Status writeGemVision(const ExportScene& scene, Sink& sink);
Status writeDxf3D(const ExportScene& scene, Sink& sink);
Status writeDxf2D(const ExportScene& scene, Sink& sink);

/// What writeObj does for scenes with shared corners, and the materials that such a file names.
Status writeSharedObj(const ExportScene& scene, Sink& sink);
Status writeMaterials(const ExportScene& scene, Sink& sink);

}  // namespace lorivan
