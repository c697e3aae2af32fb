// Tests how the methods for rotated text read arguments, handles, and properties from the host, and what they log.
#include "graphics/graphics_handle.h"
#include "plugin/graphics/cairo_sheet.h"

namespace {

using namespace tests;

using RotatedTextArguments = tests::HostTest;

TEST_F(RotatedTextArguments, RequiresATextAndAGraphics) {
  const Sheet sheet;
  const Image blank = sheet.Take();
  const auto draw = [](REALobjectStruct* graphics, REALstringStruct* text) {
    CapturedLog log;
    zkt::DrawRotatedText(graphics, 10, text, 100, 150, true, 1, false, 0);
  };
  const auto something = MakeString("text");
  const auto nothing = MakeString("");
  const auto broken = MakeString("a\xC3");
  for (REALstringStruct* const text : {static_cast<REALstringStruct*>(nullptr), nothing.Get(), broken.Get()}) {
    draw(sheet.Graphics(), text);
    EXPECT_FALSE(CanMeasure(sheet.Graphics(), text));
    EXPECT_FALSE(TakeRaised());
  }
  EXPECT_EQ(sheet.Take(), blank);

  draw(nullptr, nullptr);
  EXPECT_FALSE(CanMeasure(nullptr, nullptr));
  EXPECT_FALSE(TakeRaised()) << "empty text is detected before a nil Graphics";
  for (const bool isMeasuring : {false, true}) {
    if (isMeasuring)
      EXPECT_FALSE(CanMeasure(nullptr, something.Get()));
    else
      draw(nullptr, something.Get());
    const auto raised = TakeRaised();
    ASSERT_TRUE(raised);
    EXPECT_EQ(raised->className, "NilObjectException");
    EXPECT_EQ(raised->message, "Graphics is nil");
    EXPECT_EQ(raised->errorNumber, 0);
  }

  const host::ObjectRef withoutPicture(host::MakeObject(host::FindClass("Graphics")));
  draw(withoutPicture.Get(), something.Get());
  EXPECT_FALSE(CanMeasure(withoutPicture.Get(), something.Get()));
  EXPECT_FALSE(TakeRaised());
}

TEST_F(RotatedTextArguments, FindsTheContextByEitherHandle) {
  constexpr const char* kNewer = "Handle(type As Graphics.HandleTypes) as Ptr";
  constexpr const char* kOlder = "Handle(type As Integer) as Integer";
  const Sheet sheet;
  const struct {
    std::set<std::string, std::less<>> withheld;
    bool isFound;
  } cases[] = {
      {{}, true}, {{kNewer}, true}, {{kOlder}, true}, {{kNewer, kOlder}, false}, {{"REALLoadObjectMethod"}, false}};
  for (const auto& c : cases) {
    zkt::HostBindingTestAccess::Forget(zkt::REALLoadObjectMethod);
    host::Host::Current().withheld = c.withheld;
    EXPECT_EQ(zkt::getCGContextRef(sheet.Graphics()), c.isFound ? sheet.Context() : nullptr);
    const std::string trace = tests::TraceOf([&] { zkt::getCGContextRef(sheet.Graphics()); });
    EXPECT_EQ(trace.find("getCGContextRef 0x"), 0u);
    EXPECT_EQ(trace.find("|Query for graphics.handle failed.|") != std::string::npos, !c.isFound);
  }
  host::Host::Current().withheld.clear();
}

// If the getter for a type is missing, properties of that type behave as if the host had never set them.
TEST_F(RotatedTextArguments, WorksWithoutPropertyGetters) {
  const tests::Style rich = {
      .font = "DejaVu Serif", .size = 30, .isBold = true, .isItalic = true, .isUnderlined = true, .color = 0x0000FF};
  const auto without = [](auto& change) {
    return [&change](tests::Style style) {
      change(style);
      return style;
    };
  };
  auto flags = [](tests::Style& style) { style.isBold = style.isItalic = style.isUnderlined = false; };
  auto color = [](tests::Style& style) { style.color = 0; };
  auto integers = [](tests::Style& style) { style.size = 12, style.height = -1; };
  auto string = [](tests::Style& style) { style.font = ""; };
  const auto expectAs = [&](auto& service, auto& change) {
    const char* const name = zkt::HostBindingTestAccess::NameOf(service);
    const Image want = tests::Draw<Sheet>(without(change)(rich), "Hxgy");
    const tests::Measured wantSize = tests::Measure<Sheet>(without(change)(rich), "Hxgy");
    const ServiceWithheld withheld(service);
    EXPECT_EQ(tests::Draw<Sheet>(rich, "Hxgy"), want) << name;
    EXPECT_EQ(tests::Measure<Sheet>(rich, "Hxgy").width, wantSize.width) << name;
    EXPECT_NE(tests::Draw<Sheet>(rich, "Hxgy").Ink(), 0) << name;
  };
  expectAs(zkt::REALGetPropValueBoolean, flags);
  expectAs(zkt::REALGetPropValueColor, color);
  expectAs(zkt::REALGetPropValueInteger, integers);
  expectAs(zkt::REALGetPropValueString, string);

  const Image want = tests::Draw<Sheet>(without(integers)(rich), "Hxgy");
  zkt::HostBindingTestAccess::Bind(zkt::REALGetPropValueInteger,
                                   [](REALobject, const char*, std::int64_t* value) -> REALboolean {
                                     *value = 77;
                                     return 0;
                                   });
  EXPECT_EQ(tests::Draw<Sheet>(rich, "Hxgy"), want) << "the result of a getter that fails is ignored";
  zkt::HostBindingTestAccess::Forget(zkt::REALGetPropValueInteger);
}

TEST_F(RotatedTextArguments, AlwaysLogsTheFontAndTheRestWhileDebugging) {
  const Sheet sheet;
  const auto text = MakeString("Hi");
  tests::SetStyle(sheet.Graphics(), {.font = "No Such Font", .size = 0, .isBold = true, .color = 0x010203});
  zkt::HostBindingTestAccess::Bind(zkt::REALGetGraphicsOrigin,
                                   [](REALobject, std::int64_t* x, std::int64_t* y) -> REALboolean {
                                     *x = 8, *y = 9;
                                     return 1;
                                   });
  const auto traceOf = [](auto call) { return tests::WithoutAddresses(tests::TraceOf(call)); };
  const auto draw = [&] { zkt::DrawRotatedText(sheet.Graphics(), 30, text.Get(), 1, 2, true, 1, false, 0); };
  double width = 0;
  double height = 0;
  const auto measure = [&] { zkt::MeasureRotatedText(sheet.Graphics(), text.Get(), &width, &height, 0); };
  EXPECT_EQ(tests::LogOf(draw), "font: Sans Bold 13px|");
  EXPECT_EQ(tests::LogOf(measure), "font: Sans Bold 13px|");
  char offsets[100];
  std::snprintf(offsets, sizeof offsets, "x %f|y %f|", -width / 2, -height / 2);

  const std::string fonts =
      "Using default TextSize|fontManager @|systemfont @|!fontManager: Pango @|!tf: No Such Font|"
      "!systemfont: Sans 13px|fontWithFamily (nil)|boldSystemFontOfSize @|!font: Sans Bold 13px|";
  EXPECT_EQ(traceOf(draw),
            "DrawRotatedText|g @|Rotation 30.000000|text Hi|x 1|y 2|originX 8|originY 9|textfont encoding 134217984|"
            "bold 1|italic 0|underline 0|ForeColor 66051|TextUnit 0|TextSize 0|getCGContextRef @|context @|" +
                fonts + offsets);
  host::FindProperty(sheet.Graphics(), "TextUnit")->payload = std::int64_t{4};
  EXPECT_EQ(traceOf(measure),
            "MeasureRotatedText|g @|text Hi|textfont encoding 134217984|bold 1|italic 0|underline 0|TextUnit 4|"
            "TextUnit Millimeter|TextSize 0|getCGContextRef @|context @|" +
                fonts);
  EXPECT_EQ(traceOf([&] { zkt::DrawRotatedText(nullptr, 0, text.Get(), 1, 2, false, 1, false, 0); }),
            "DrawRotatedText|g (nil)|Rotation 0.000000|text Hi|x 1|y 2|originX 0|originY 0|g is nil|");
  EXPECT_EQ(traceOf([&] { zkt::MeasureRotatedText(nullptr, nullptr, &width, &height, 0); }),
            "MeasureRotatedText|g (nil)|text |text is empty.|");
  TakeRaised();
  zkt::HostBindingTestAccess::Forget(zkt::REALGetGraphicsOrigin);
}

}  // namespace
