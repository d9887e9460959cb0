// Documents that the tests of design/ begin with, and files of them.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "base/sink.h"
#include "design/edits.h"
#include "design/outputs.h"
#include "platform/none/none_platform.h"

namespace lorivan {

inline Document gridOf(Shape shape, int columns, int rows, int scale = 30) {
  Document document;
  document.fields.text(Param::XNo) = std::to_string(columns);
  document.fields.text(Param::YNo) = std::to_string(rows);
  return *chooseShape(withField(document, Param::Scale, std::to_string(scale)), shape);
}

/// The knot of a document that has one.
inline std::unique_ptr<Knot> knotOf(const Document& document) {
  auto knot = std::make_unique<Knot>();
  EXPECT_TRUE(makeKnot(document, *knot));
  return knot;
}

/// Bytes of a document in a format.
inline std::string made(const Document& document, std::string_view extension,
                        const OutputOptions& options = {}) {
  NonePlatform platform;
  const auto knot = knotOf(document);
  const StrandColours colours = strandColours(document.fields.boxes);
  MemorySink sink;
  const Status status =
      makeOutput(*findFormat(extension, DxfKind::faces), {platform, document, *knot, colours, options}, sink);
  EXPECT_TRUE(status) << status.error().message;
  return std::move(sink.bytes);
}

}  // namespace lorivan
