#include "platform/qt/printing.h"

#include <QImage>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>

#include "platform/qt/convert.h"
#include "platform/qt/painter_surface.h"

namespace lorivan {
namespace {

class PageQt final : public PrintPage {
 public:
  PageQt(QPainter& painter, const QPrinter& printer)
      : painter_(painter),
        dots_(printer.resolution() / 25.4),
        surface_(painter, printer.pageLayout().paintRectPixels(printer.resolution()).width(),
                 printer.pageLayout().paintRectPixels(printer.resolution()).height()) {}
  Surface& surface() override { return surface_; }
  double dotsPerMillimetre() const override { return dots_; }
  Status place(Surface& picture, PointI corner, int width, int height) override {
    const PixelBlock block = picture.lendPixels();
    if (!block.pixels) return unwritable("this picture has no pixels to print");
    const QImage view(reinterpret_cast<const uchar*>(block.pixels), block.width, block.height,
                      static_cast<qsizetype>(block.stride) * 4, QImage::Format_RGB32);
    painter_.setRenderHint(QPainter::SmoothPixmapTransform);
    painter_.drawImage(QRect(corner.x, corner.y, width, height), view);
    return {};
  }

 private:
  QPainter& painter_;
  double dots_;
  PainterSurface surface_;
};

}  // namespace

/// What is drawn is gathered in the printer's job; a job whose drawing failed is given up.
Status printPage(QPrinter& printer, const std::function<Status(PrintPage&)>& draw) {
  QPainter painter;
  if (!painter.begin(&printer)) return unwritable("the printer cannot be reached");
  painter.setRenderHint(QPainter::Antialiasing);
  PageQt page(painter, printer);
  const Status drawn = draw(page);
  if (!drawn) printer.abort();
  const bool taken = painter.end() && printer.printerState() != QPrinter::Error;
  if (drawn && !taken) return unwritable("the printer did not take the page");
  return drawn;
}

Result<bool> printOnPaper(QWidget* parent, const PrintSpec& spec,
                          const std::function<Status(PrintPage&)>& draw) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(toQString(spec.title));
  printer.setPageOrientation(spec.landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
  printer.setPageMargins(QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter);
  QPrintDialog dialog(&printer, parent);
  dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintShowPageSize);
  if (dialog.exec() != QDialog::Accepted) return false;
  const Status printed = printPage(printer, draw);
  if (!printed) return printed.error();
  return true;
}

}  // namespace lorivan
