// Pages on Qt's printers, into files.
#include "platform/qt/printing.h"

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QPrinter>
#include <QTemporaryDir>

#include "base/sink.h"
#include "platform/qt/raster_surface.h"

namespace lorivan {
namespace {

class PrintingQt : public testing::Test {
 protected:
  std::string printed(const std::function<Status(PrintPage&)>& draw) {
    const QString name = folder_.filePath(QStringLiteral("page.pdf"));
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFileName(name);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setPageMargins(QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter);
    status_ = printPage(printer, draw);
    const auto bytes = readFile(name.toStdString(), 10'000'000);
    return bytes ? *bytes : std::string();
  }
  QTemporaryDir folder_;
  Status status_;
};

TEST_F(PrintingQt, ShapesStayShapesAndPicturesBecomeImages) {
  const std::vector<std::vector<PointF>> shape = {
      {{10, 10}, {500, 10}, {500, 10}, {500, 500}, {500, 500}, {10, 500}, {10, 10}}};
  const std::string shapes = printed([&](PrintPage& page) -> Status {
    const double dots = page.dotsPerMillimetre();
    EXPECT_NEAR(page.surface().width() / dots, 190, 1);
    EXPECT_NEAR(page.surface().height() / dots, 277, 1);
    page.surface().clear(0xFFFFFF);
    page.surface().fillPath(shape, 0x0000FF);
    return {};
  });
  EXPECT_TRUE(status_);
  EXPECT_TRUE(shapes.starts_with("%PDF") && shapes.find("/Subtype /Image") == std::string::npos);
  const auto picture = RasterSurface::create(40, 32);
  (*picture)->clear(0x123456);
  const std::string image = printed([&](PrintPage& page) {
    return page.place(**picture, {100, 100}, 4000, 3200);
  });
  EXPECT_NE(image.find("/Subtype /Image"), std::string::npos);
}

TEST_F(PrintingQt, WhatCannotBeDrawnIsTold) {
  printed([](PrintPage&) -> Status { return impossibleKnot("no strands"); });
  EXPECT_EQ(status_.error().message, "no strands");
  QPrinter printer;
  printer.setOutputFileName(QStringLiteral("/no such folder/page.pdf"));
  EXPECT_FALSE(printPage(printer, [](PrintPage&) { return Status(); }));
}

}  // namespace
}  // namespace lorivan
