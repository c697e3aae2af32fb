// Tests when the plug-in loads Pango, and what it does without Pango. Each test runs in its own process.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>

#include "core/exceptions.h"
#include "core/graphics.h"
#include "core/host.h"
#include "core/strings.h"
#include "services/members.h"
#include "services/plugin_library.h"

namespace {

bool IsPangoLoaded() { return ::dlopen("libpangocairo-1.0.so.0", RTLD_NOW | RTLD_NOLOAD) != nullptr; }

class Pango : public testing::Test {
 protected:
  Pango() {
    host::LoadPlugin(ZKT_PLUGIN);
    EXPECT_FALSE(IsPangoLoaded()) << "loading the plug-in must not load Pango";
  }

  void Draw() const {
    using Function = void (*)(REALobjectStruct*, double, REALstringStruct*, std::int64_t, std::int64_t, bool, double,
                              bool, std::int64_t);
    reinterpret_cast<Function>(Find("DrawRotatedTextZKT"))(graphics_, 30, text_.Get(), 10, 30, false, 1, false, 0);
  }
  bool CanMeasure() const {
    using Function = bool (*)(REALobjectStruct*, REALstringStruct*, double*, double*, std::int64_t);
    double width = 7;
    double height = 7;
    const bool isMeasured =
        reinterpret_cast<Function>(Find("MeasureRotatedTextZKT"))(graphics_, text_.Get(), &width, &height, 0);
    EXPECT_EQ(width != 0 || height != 0, isMeasured);
    return isMeasured;
  }
  bool IsBlank() const {
    cairo_surface_t* const surface = cairo_get_target(host::ContextOf(graphics_));
    cairo_surface_flush(surface);
    const unsigned char* const data = cairo_image_surface_get_data(surface);
    const auto size = static_cast<std::ptrdiff_t>(cairo_image_surface_get_stride(surface)) * kHeight;
    return std::count(data, data + size, 0) == size;
  }

 private:
  static void* Find(const char* name) { return host::FindNativeFunction(host::Host::Current(), name); }

  static constexpr int kHeight = 40;
  host::ObjectRef picture_ = host::MakePicture(60, kHeight);
  REALobjectStruct* graphics_ = host::GraphicsOf(picture_.Get());
  host::StringRef text_{host::MakeString("text", zkt::kEncodingUTF8)};
};

TEST_F(Pango, IsLoadedToDraw) {
  EXPECT_TRUE(IsBlank());
  Draw();
  EXPECT_TRUE(IsPangoLoaded());
  EXPECT_FALSE(IsBlank());
  EXPECT_TRUE(CanMeasure());
}

// Before the plug-in uses Pango, it must check that threads can be created. Otherwise, GLib would abort the process.
TEST_F(Pango, WaitsForThreads) {
  constexpr unsigned kNobody = 65534;
  ASSERT_TRUE(::getuid() != 0 || ::setuid(kNobody) == 0);
  rlimit limit{};
  ASSERT_EQ(::getrlimit(RLIMIT_NPROC, &limit), 0);
  const rlimit none{.rlim_cur = 1, .rlim_max = limit.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_NPROC, &none), 0);
  Draw();
  EXPECT_TRUE(IsBlank());
  EXPECT_FALSE(CanMeasure());
  ASSERT_EQ(::setrlimit(RLIMIT_NPROC, &limit), 0);
  EXPECT_TRUE(CanMeasure());
}

TEST_F(Pango, MayBeMissing) {
  for (int i = 0; i < 2; ++i) {
    Draw();
    EXPECT_TRUE(IsBlank());
    EXPECT_FALSE(CanMeasure());
    EXPECT_FALSE(host::TakeRaised());
  }
}

}  // namespace
