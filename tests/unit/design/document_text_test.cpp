// Knot files: what is written comes back, and what is broken is told by line.
#include "design/document_text.h"

#include <gtest/gtest.h>

#include "design/edits.h"

namespace lorivan {
namespace {

const std::string kHead = "20,0\r\n30,2,2,12,7,10,3,5\r\n";
const std::string kSmall = kHead + "-20,-20,20,-20,0,-20,1,0\r\n20,-20,20,20,20,0,2,1\r\n";

KnotLine line(std::int16_t x1, std::int16_t y1, std::int16_t x2, std::int16_t y2, std::int16_t kind,
              std::int16_t passes) {
  const auto middle = [](int a, int b) { return static_cast<std::int16_t>((a + b) / 2); };
  const float angle = lineAngle(static_cast<float>(x1 - x2), static_cast<float>(y1 - y2));
  return {x1, y1, x2, y2, middle(x1, x2), middle(y1, y2), kind, passes, angle};
}

/// A document that shares nothing with that of a first start.
Document otherDocument() {
  Document d;
  for (int i = 0; i < kParamCount; ++i) {
    const ParamSpec& spec = parameterTable()[i];
    const auto p = static_cast<Param>(i);
    const std::string most = correctedText(p, std::string(spec.max));
    d.fields.texts[i] = d.fields.text(p) == most ? std::string(spec.min) : most;
  }
  for (const Param angle : {Param::Theta, Param::Phi, Param::Psi})
    d.fields.text(angle) = "359.5";  // 360 is 0
  for (bool& box : d.fields.checks) box = !box;
  for (std::size_t k = 0; k < d.fields.boxes.size(); ++k) d.fields.boxes[k] = static_cast<Colour>(k * 1001);
  d.fields.shape = Shape::Custom;
  d.CellSize = -7;
  CustomShape outline;
  for (int i = 0; i < 5; ++i)
    outline.addPoint(100.1F * static_cast<float>(i) + 0.25F, -3.0F / static_cast<float>(i + 1));
  for (int i = 1; i < 5; ++i) outline.addLine(i, i + 1);
  outline.deletePoint(3);
  d.outline = Shared(outline);
  d.outlineAhead = true;
  d.lines = Shared(KnotLines{line(-32768, 0, 32767, 32767, 3, 2), line(0, 9, 0, -9, 0, 0)});
  return d;
}

TEST(DocumentText, EverythingOfADocumentComesBack) {
  const Document all = otherDocument(), first;
  for (std::size_t i = 0; i < kParamCount; ++i) ASSERT_NE(all.fields.texts[i], first.fields.texts[i]) << i;
  const std::string text = documentText(all);
  const auto read = readDocument(text);
  ASSERT_TRUE(read) << read.error().message;
  EXPECT_TRUE(read->corrections.empty());
  EXPECT_EQ(read->document, all);
  EXPECT_EQ(documentText(read->document), text);
  EXPECT_EQ(readDocument(documentText(first), all)->document.fields, first.fields)
      << "nothing of the document before stays";
}

TEST(DocumentText, WithTheEightValuesAloneTheFormIsExact) {
  const auto read = readDocument(kSmall);
  ASSERT_TRUE(read);
  EXPECT_EQ(documentText(read->document), kSmall);
  EXPECT_EQ(read->document.lines->at(1), line(20, -20, 20, 20, kWall, 1));
  Document eight = read->document;
  const char* texts[] = {"6", "3", "20", "-15", "2.5", "50", "6", "1"};
  for (std::size_t i = 0; i < kKnotFileFields.size(); ++i) eight.fields.text(kKnotFileFields[i]) = texts[i];
  EXPECT_EQ(documentText(eight), "20,0\r\n6,3,20,-15,2.5,50,6,1\r\n" + kSmall.substr(kHead.size()));
  EXPECT_EQ(documentText(withCheck(withField(eight, Param::Skew, "2"), Check::Mirror, true)),
            "20,0\r\n6,3,20,-15,2.5,50,6,1,vtSkew=2,chkMirror=1\r\n" + kSmall.substr(kHead.size()));
}

TEST(DocumentText, LineEndsMarksAndUnknownNamesAreNoMatter) {
  const Document wanted = readDocument(kSmall)->document;
  const auto with = [](std::string_view end) {
    std::string text;
    for (const char c : kSmall) c == '\n' ? text += end : text += c == '\r' ? "" : std::string(1, c);
    return text;
  };
  const std::string newer = "20,0\r\n30,2,2,12,7,10,3,5,vtNew=5,what,=,chkNew=7,txtCol15=1,txtColour=x,\r\n";
  for (const std::string& text :
       {with("\n"), with("\r"), "\xEF\xBB\xBF" + kSmall, kSmall.substr(0, kSmall.size() - 2),
        kSmall + "\r\n \n", newer + kSmall.substr(kHead.size())}) {
    const auto read = readDocument(text);
    ASSERT_TRUE(read) << read.error().message;
    EXPECT_EQ(read->document, wanted) << text;
  }
}

TEST(DocumentText, FewerValuesKeepTheOthersAndWrongOnesAreCorrected) {
  const Document before = otherDocument();
  const auto old = readDocument("20,0\r\n40,3,4\r\n", before);
  ASSERT_TRUE(old);
  const KnotFields& fields = old->document.fields;
  EXPECT_EQ(fields.text(Param::Scale) + fields.text(Param::XNo) + fields.text(Param::YNo), "4034");
  for (const Param p : {Param::StartColour, Param::Width, Param::Swish, Param::Smooth, Param::Edge})
    EXPECT_EQ(fields.text(p), before.fields.text(p)) << parameterSpec(p).field;
  EXPECT_TRUE(old->document.lines && old->document.lines->empty());
  const auto wrong = readDocument("20,0\n30,3.6,2,12,99,10,3,5,vtSkew=0\n");
  ASSERT_TRUE(wrong);
  EXPECT_EQ(wrong->corrections,
            (std::vector<std::string>{"vtXNo \"3.6\" corrected to 4", "vtWidth \"99\" corrected to 30",
                                      "vtSkew \"0\" corrected to 0.1"}));
}

TEST(DocumentText, FaultsNameTheirLineAndReason) {
  const std::string good = "0,0,9,0,4,0,1,0\r\n", range = " is not a whole number from -32768 to 32767";
  const auto named = [](const std::string& pair) { return "20,0\n30,2,2,12,7,10,3,5,vtSkew=2," + pair; };
  std::string tooMany = kHead;
  for (int i = 0; i <= kMostLines; ++i) tooMany += good;
  const std::pair<std::string, std::string> cases[] = {
      {"", "line 1: the file is empty"},
      {"20,13\r\n", "line 1: there is no shape number 13"},
      {"20,0\r\n30,2\r\n", "line 2: has fewer than three values"},
      {"20,0\r\n30,nan,2\r\n", "line 2: \"nan\" is not a number for vtXNo"},
      {"20,0\r\n1e999,2,2\r\n", "line 2: \"1e999\" is not a number for vtScale"},
      {named("vtWidth=abc"), "line 2: \"abc\" is not a number for vtWidth"},
      {named("chkLoop=2"), "line 2: \"2\" is not 0 or 1 for chkLoop"},
      {named("picShape=7500 6000 1 10 nan 0"), "line 2: picShape: nan is not a number"},
      {named("picShape=7500 6000 9999999"), "line 2: picShape: the number of points 9999999 is out of range"},
      {kHead + good + "0,0,9,0,4,0,1\r\n", "line 4: ends after 7 of 8 values"},
      {kHead + "0,0,40000,0,4,0,1,0\r\n", "line 3: \"40000\"" + range},
      {kHead + "0,0,9,0,4,0,1,0,5\r\n", "line 3: has more than 8 values"},
      {"20,0\r30,2,2\r" + good.substr(0, 5), "line 3: ends after 3 of 8 values"},
      {"30,0\r\n30,3,2,5,7,10,3,5,chkWrap=1,vtRingPerc=100\r\n0,0,2000,0,4,0,1,0\r\n",
       "line 3: leads more than 16 times round the cylinder"},
      {tooMany, "line 5003: a knot has at most 5000 lines"},
  };
  for (const auto& [text, reason] : cases) {
    const auto read = readDocument(text);
    ASSERT_FALSE(read) << reason;
    EXPECT_EQ(read.error().message, reason);
    EXPECT_EQ(read.error().kind, ErrorKind::input);
  }
}

}  // namespace
}  // namespace lorivan
