// One writer for each file that other tools read. A writer knows no window and no file name: it gets a scene
// and gives bytes, ASCII with CR LF line ends, the same for the same scene everywhere.
//
// A failed writer may have written a part; its error is one of the messages in scene.h, or says that the sink
// took no more.
#pragma once

#include "base/sink.h"
#include "export/scene.h"

namespace lorivan {

Status writePov(const ExportScene& scene, Sink& sink);
Status writeVrml(const ExportScene& scene, Sink& sink);
Status writeObj(const ExportScene& scene, Sink& sink);
Status writeStl(const ExportScene& scene, Sink& sink);
Status writeXyz(const ExportScene& scene, Sink& sink);
Status writeGemVision(const ExportScene& scene, Sink& sink);
Status writeDxf3D(const ExportScene& scene, Sink& sink);
Status writeDxf2D(const ExportScene& scene, Sink& sink);

}  // namespace lorivan
