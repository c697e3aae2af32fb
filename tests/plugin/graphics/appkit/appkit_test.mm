// Runs the same checks on the AppKit code as on the Cairo code. The AppKit code draws into an image with GNUstep's
// AppKit.
#include <objc/runtime.h>
#include <sys/wait.h>
#include <unistd.h>

#include "core/classes.h"
#include "core/graphics.h"
#include "graphics/cocoa_init.h"
#include "plugin/graphics/rotated_text_checks.h"
#include "shim.h"

namespace {

using namespace tests;

int gPreparations = 0;
int gDictionaries = 0;

id GetDictionary(id, SEL) {
  ++gDictionaries;
  return [NSMutableDictionary dictionary];
}
void Prepare(id, SEL) { ++gPreparations; }

// Initializes AppKit in a child process in which nothing has been drawn yet, so the test that calls this function must
// run first. Returns the log, which shows each step.
std::string LogOfCocoaInit(bool withHelpers) {
  CapturedLog log;
  const pid_t child = ::fork();
  if (child == 0) {
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    if (withHelpers) {
      const Class meta = object_getClass([NSException class]);
      class_addMethod(meta, @selector(GetInstancesDictionaryZKT), reinterpret_cast<IMP>(GetDictionary), "@@:");
      class_addMethod(meta, @selector(PrepareNSExceptionZKT), reinterpret_cast<IMP>(Prepare), "v@:");
    }
    zkt::gpartname = "Util";
    zkt::DebuggingEnabled = 1;
    zkt::CocoaInit();
    zkt::CocoaInit();
    zkt::LogMessageX("called %d %d", gDictionaries, gPreparations);
    [pool drain];
    ::_exit(0);
  }
  int status = -1;
  ::waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  return log.Take();
}

TEST(CocoaInit, LooksUpHelpersOnce) {
  const struct {
    bool withHelpers;
    std::vector<const char*> lines;
  } cases[] = {
      {false,
       {"ZKT Debug: CocoaInit Util", "ZKT Debug: GetInstancesDictionaryZKT is missing!",
        "ZKT Debug: Initialize Exceptions...", "ZKT Debug: PrepareNSExceptionZKT not found", "called 0 0"}},
      {true,
       {"ZKT Debug: CocoaInit Util", "ZKT Debug: GetInstancesDictionaryZKT found.",
        "ZKT Debug: Initialize Exceptions...", "called 1 1"}},
  };
  for (const auto& c : cases) {
    const std::string log = LogOfCocoaInit(c.withHelpers);
    std::size_t at = 0;
    for (const char* const line : c.lines) {
      at = log.find(line, at);
      ASSERT_NE(at, std::string::npos) << line << " in\n" << log;
      at = log.find('\n', at);
    }
    EXPECT_EQ(static_cast<std::size_t>(std::count(log.begin(), log.end(), '\n')), c.lines.size()) << log;
  }
}

// An AppKit image to draw on. The host's picture provides only the properties.
class Sheet {
 public:
  Sheet() : picture_(host::MakePicture(1, 1)) {
    [NSApplication sharedApplication];
    InstallShim();
    image_ = [[NSImage alloc] initWithSize:NSMakeSize(tests::kSheetSize, tests::kSheetSize)];
    [image_ lockFocus];
    [[NSColor whiteColor] set];
    [NSBezierPath fillRect:NSMakeRect(0, 0, tests::kSheetSize, tests::kSheetSize)];
    context_ = {[NSGraphicsContext currentContext], 0, 0};
    current_ = &context_;
    host::FindClass("Graphics")->methods["Handle(type As Graphics.HandleTypes) as Ptr"] = reinterpret_cast<void*>(
        +[](REALobjectStruct*, std::int64_t kind) { return kind == 5 ? static_cast<void*>(current_) : nullptr; });
  }
  Sheet(const Sheet&) = delete;
  Sheet& operator=(const Sheet&) = delete;
  ~Sheet() {
    EXPECT_EQ([NSGraphicsContext currentContext], context_.target);
    EXPECT_EQ(context_.saves, context_.restores);
    [image_ unlockFocus];
    [image_ release];
    [pool_ drain];
  }

  REALobjectStruct* Graphics() const { return host::GraphicsOf(picture_.Get()); }
  int Saves() const { return context_.saves; }

  Image Take() const {
    NSBitmapImageRep* const bitmap = [[[NSBitmapImageRep alloc]
        initWithFocusedViewRect:NSMakeRect(0, 0, tests::kSheetSize, tests::kSheetSize)] autorelease];
    Image image{tests::kSheetSize, tests::kSheetSize, {}};
    EXPECT_EQ([bitmap pixelsWide], tests::kSheetSize);
    EXPECT_EQ([bitmap pixelsHigh], tests::kSheetSize);
    for (NSInteger row = 0; row < [bitmap pixelsHigh]; ++row)
      for (NSInteger column = 0; column < [bitmap pixelsWide]; ++column) {
        NSUInteger samples[5] = {};
        [bitmap getPixel:samples atX:column y:row];
        const auto sample = [&](int i) { return static_cast<std::uint8_t>(samples[i]); };
        image.pixels.push_back({sample(0), sample(1), sample(2)});
      }
    return image;
  }

 private:
  static inline CGContextRef current_;

  NSAutoreleasePool* pool_ = [[NSAutoreleasePool alloc] init];
  host::ObjectRef picture_;
  NSImage* image_;
  CGContext context_;
};

using AppKitText = tests::HostTest;

TEST_F(AppKitText, IsDrawnAtItsPoint) { tests::ExpectTextAtItsPoint<Sheet>(); }
TEST_F(AppKitText, IsMeasuredAsItIsDrawn) { tests::ExpectMeasuringAgreesWithInk<Sheet>(); }
TEST_F(AppKitText, HasTheStyleOfTheGraphics) {
  const Sheet sheet;  // initializes AppKit before a font is requested
  tests::ExpectStyles<Sheet>(static_cast<std::int64_t>([NSFont systemFontSize]));
}
TEST_F(AppKitText, HasColorAndOpacity) { tests::ExpectColorAndOpacity<Sheet>(); }

TEST_F(AppKitText, RestoresTheContext) {
  const Sheet sheet;
  [[NSColor redColor] set];
  CapturedLog log;
  double width = 0;
  double height = 0;
  zkt::DrawRotatedText(sheet.Graphics(), 30, MakeString("a").Get(), 100, 150, true, 1, false, 0);
  EXPECT_EQ(sheet.Saves(), 1);
  EXPECT_TRUE(zkt::MeasureRotatedText(sheet.Graphics(), MakeString("a").Get(), &width, &height, 0));
  EXPECT_EQ(sheet.Saves(), 2);
  [NSBezierPath fillRect:NSMakeRect(0, 0, 10, 10)];
  EXPECT_EQ(sheet.Take().pixels[static_cast<std::size_t>(tests::kSheetSize * (tests::kSheetSize - 5) + 5)],
            (tests::Pixel{255, 0, 0}));
}

// The host may have a current context of its own, or none.
TEST_F(AppKitText, RestoresTheCurrentContext) {
  const Sheet sheet;
  tests::SetStyle(sheet.Graphics(), {});
  NSGraphicsContext* const own = [NSGraphicsContext currentContext];
  [NSGraphicsContext setCurrentContext:nil];
  CapturedLog log;
  zkt::DrawRotatedText(sheet.Graphics(), 30, MakeString("a").Get(), 100, 150, true, 1, false, 0);
  double width = 0;
  double height = 0;
  zkt::MeasureRotatedText(sheet.Graphics(), MakeString("a").Get(), &width, &height, 0);
  EXPECT_EQ([NSGraphicsContext currentContext], nil);
  [NSGraphicsContext setCurrentContext:own];
  EXPECT_GT(sheet.Take().Ink(), 0);
}

TEST_F(AppKitText, AlwaysLogsTheFont) {
  const Sheet sheet;
  tests::SetStyle(sheet.Graphics(), {.isBold = true});
  CapturedLog log;
  zkt::DrawRotatedText(sheet.Graphics(), 30, MakeString("a").Get(), 100, 150, true, 1, false, 0);
  const std::string line = log.Take();
  EXPECT_NE(line.find("font: "), std::string::npos);
  EXPECT_NE(line.find("DejaVuSans-Bold"), std::string::npos) << line;
}

}  // namespace
