// Tests what happens when each allocation of the plug-in fails in turn.
#include <array>
#include <clocale>
#include <deque>
#include <optional>
#include <set>

#include "arrays/sort_delegate.h"
#include "csv/split_csv.h"
#include "frame/registration/globals_module.h"
#include "locale/locale_class.h"
#include "plugin/memory/failing_new.h"
#include "runtime/cf_string.h"
#include "runtime/exceptions.h"
#include "runtime/text_builder.h"
#include "runtime/text_reader.h"
#include "support/host_fixture.h"

namespace {

using namespace tests;
using zkt::REALmethodDefinition;
using Strings = std::vector<std::string>;

// Exempts a host service from allocation failures: only the plug-in's own allocations may fail.
template <auto& service, class Result, class... Arguments>
void Exempt(zkt::HostService<Result(Arguments...)>&) {
  static const auto function = service.Get();
  zkt::HostBindingTestAccess::Bind(service, [](Arguments... arguments) -> Result {
    const tests::ReliableNew reliable;
    return function(arguments...);
  });
}

template <auto&... services>
void ExemptAll() {
  (Exempt<services>(services), ...);
}

class OutOfMemory : public tests::HostTest {
 protected:
  OutOfMemory() {
    ExemptAll<zkt::REALnewInstance, zkt::REALRaiseException, zkt::REALSetPropValueString, zkt::REALSetPropValueInteger,
              zkt::REALUnlockObject, zkt::REALLockString, zkt::REALUnlockString, zkt::REALBuildStringWithEncoding,
              zkt::REALConvertString, zkt::REALGetStringData, zkt::REALDisposeStringData, zkt::REALGetStringBytes,
              zkt::REALGetStringByteCount, zkt::REALGetStringEncoding, zkt::REALCreateArray, zkt::REALGetArrayUBound>();
  }

  // Runs the action repeatedly. Its first allocation fails in the first run, its second in the second run, and so on,
  // until none fails. Passes each result to check(result, failure). Returns the number of allocations.
  template <class Action, class Check>
  static int FailEach(Action action, Check check) {
    int allocations = 0;
    for (const Failure failure : {Failure::kOnce, Failure::kAllLater}) {
      allocations = 0;
      for (bool hasFailed = true; hasFailed;) {
        const int nth = allocations + 1;
        SCOPED_TRACE(testing::Message() << "allocation " << nth
                                        << (failure == Failure::kOnce ? "" : " and later ones"));
        FailingNew failing(nth, failure);
        const auto result = action();
        hasFailed = failing.Stop();
        check(result, hasFailed ? failure : Failure::kNone);
        if (hasFailed) ++allocations;
      }
    }
    return allocations;
  }
};

TEST_F(OutOfMemory, SplittingReturnsAllFieldsOrRaises) {
  // The doubled quotes make the field outgrow its buffer.
  const std::string text = "a,\"" + std::string(150, 'x') + "\"\"" + std::string(900, 'y') + "\",b";
  const host::StringRef string = MakeString(text);
  const auto split = [&] {
    return host::ArrayRef(reinterpret_cast<host::Array*>(zkt::SplitCSV(string.Get(), nullptr, nullptr)));
  };
  const Strings want = {"a", std::string(150, 'x') + "\"" + std::string(900, 'y'), "b"};
  EXPECT_EQ(tests::ElementsOf(split()), want);
  const int allocations = FailEach(split, [&](const host::ArrayRef& array, Failure failure) {
    auto raised = TakeRaised();
    ASSERT_NE(static_cast<bool>(array), raised.has_value());
    if (array) {
      EXPECT_EQ(tests::ElementsOf(array), want);
    } else {
      EXPECT_EQ(raised->className, "OutOfMemoryException");
      // If there is no memory for the whole message, only its beginning is used.
      EXPECT_EQ(raised->message,
                failure == Failure::kOnce ? "Failed to allocate memory: std::bad_alloc" : "Failed to allocate memory");
      raised.reset();  // it holds a reference to the exception
      const host::ReferenceReport references = host::ReportReferences();
      EXPECT_EQ(references.leaked, (decltype(references.leaked){{"string", 1}}))
          << host::DescribeReferences(references);
    }
  });
  EXPECT_GE(allocations, 3) << "copy of the text, field, grown field";
}

TEST_F(OutOfMemory, ADelegateSortsWithoutACopy) {
  const host::ObjectRef delegate = host::MakeNativeDelegate(
      reinterpret_cast<void*>(+[](REALobject, std::int32_t a, std::int32_t b) -> std::int64_t { return a - b; }));
  const host::ArrayRef array(host::MakeArray({host::TypeKind::kInt32, false, {}}, 99));
  auto* const elements = reinterpret_cast<std::int32_t*>(array->data);
  const auto sort = [&] {
    for (int i = 0; i < 100; ++i) elements[i] = i * 37 % 100;
    zkt::SortArrayZKT_Int32Del(reinterpret_cast<_REALarrayInt32*>(array.Get()), delegate.Get(), 0);
    return std::is_sorted(elements, elements + 100);
  };
  EXPECT_TRUE(sort()) << "the first sort verifies array access while memory is available";
  EXPECT_EQ(FailEach(sort, [](bool isSorted, Failure) { EXPECT_TRUE(isSorted); }), 1);
}

TEST_F(OutOfMemory, OutOfBoundsIsRaisedWithAShortMessage) {
  {
    const FailingNew failing(1, Failure::kAllLater);
    zkt::RaiseOutOfBoundsException(7, 5);
  }
  const auto raised = TakeRaised();
  ASSERT_TRUE(raised.has_value());
  EXPECT_EQ(raised->className, "OutOfBoundsException");
  EXPECT_EQ(raised->message, "Out of Bounds");
  EXPECT_EQ(raised->errorNumber, 0);
}

REALmethodDefinition GlobalMethod(const char* declaration) {
  return {reinterpret_cast<void*>(&zkt::SplitCSV), nullptr, declaration, 0x4, 0, nullptr};
}

Strings DeclarationsIn(const zkt::GlobalsModule& module) {
  Strings declarations;
  const zkt::REALmoduleDefinition* const record = module.Record();
  for (std::uint64_t i = 0; record != nullptr && i < record->methodCount; ++i) {
    EXPECT_TRUE((record->methods[i].flags & zkt::kGlobalScope) != 0);
    declarations.emplace_back(record->methods[i].declaration);
  }
  return declarations;
}

Strings Joined(Strings first, const Strings& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

struct Appended {
  std::string log;
  Strings declarations;
  Strings afterRetry;
};

// Appends to a module that already has the declarations in `before`. Appends again after memory has become
// available.
template <class Append>
Appended AppendTo(const Strings& before, Append append) {
  std::optional<tests::ReliableNew> reliable(std::in_place);
  // The modules are never destroyed, because hosts keep pointers to the records.
  static auto& modules = *new std::deque<zkt::GlobalsModule>;
  zkt::GlobalsModule& module = modules.emplace_back();
  for (const std::string& declaration : before) module.Append(std::array{GlobalMethod(declaration.c_str())});
  CapturedLog log;
  reliable.reset();
  append(module);
  reliable.emplace();
  Appended appended = {log.Take(), DeclarationsIn(module), {}};
  append(module);
  appended.afterRetry = DeclarationsIn(module);
  return appended;
}

TEST_F(OutOfMemory, TheModuleOfGlobalMethodsKeepsItsMethods) {
  zkt::gpartname = "Util";
  const auto methods = std::array{GlobalMethod("A()"), GlobalMethod("B()")};
  REALmethodDefinition property = GlobalMethod("C as Integer");
  property.setter = property.function;
  zkt::REALclassDefinition extension = {};
  extension.name = "Date", extension.methods = &property, extension.methodCount = 1;
  const Strings extensionMethods = {"C(extends ref as Date) as Integer",
                                    "C(extends ref as Date, assigns value as Integer)"};
  const std::string warning = "ZKT Debug: Warning: Failed to allocate memory.\n";

  for (const Strings& before : {Strings(), Strings({"First()"})}) {
    const auto append = [&] { return AppendTo(before, [&](zkt::GlobalsModule& module) { module.Append(methods); }); };
    const int allocations = FailEach(append, [&](const Appended& appended, Failure failure) {
      EXPECT_EQ(appended.log, failure == Failure::kNone ? "" : warning);
      EXPECT_EQ(appended.declarations, failure == Failure::kNone ? Joined(before, {"A()", "B()"}) : before);
      EXPECT_EQ(appended.afterRetry, Joined(appended.declarations, {"A()", "B()"}));
    });
    EXPECT_GE(allocations, before.empty() ? 4 : 1);

    const auto appendExtension = [&] {
      return AppendTo(before, [&](zkt::GlobalsModule& module) { module.AppendExtension(extension); });
    };
    std::set<Strings> outcomes;
    FailEach(appendExtension, [&](const Appended& appended, Failure failure) {
      EXPECT_EQ(appended.afterRetry, Joined(appended.declarations, extensionMethods));
      EXPECT_EQ(appended.log.find(warning) == 0, failure != Failure::kNone) << appended.log;
      if (failure != Failure::kNone) outcomes.insert(appended.declarations);
    });
    // If the array cannot be allocated, no row is added. If a declaration cannot be rewritten, only its row is omitted.
    const std::set<Strings> wanted = {before, Joined(before, {extensionMethods[0]}),
                                      Joined(before, {extensionMethods[1]})};
    EXPECT_EQ(outcomes, wanted);
  }
}

TEST_F(OutOfMemory, StringsAreCompleteOrNil) {
  for (const char* const text : {"a text that is too long to be kept in place", "größer", "\xE9"}) {
    const auto build = [&] { return host::StringRef(zkt::CString2RB_detect_encoding(text)); };
    FailEach(build, [&](const host::StringRef& built, Failure failure) {
      ASSERT_TRUE(built || failure != Failure::kNone);
      if (!built) return;
      EXPECT_EQ(built->View(), text);
    });
  }
}

TEST_F(OutOfMemory, CFStringsAreCompleteOrNil) {
  for (const std::uint32_t encoding :
       {zkt::kEncodingUTF8, zkt::kEncodingUTF16, zkt::kEncodingUTF16BE, zkt::kEncodingISOLatin1}) {
    const host::StringRef string = MakeString("a text that is too long to be kept in place.", encoding);
    const auto make = [&] { return zkt::RBString2CFString(string.Get()); };
    const std::string want = host::ToUTF8(string.Get());
    char text[256];
    const auto read = [&](CFStringRef made) {
      return CFStringGetCString(made, text, sizeof text, kCFStringEncodingUTF8);
    };
    const int allocations = FailEach(make, [&](CFStringRef made, Failure failure) {
      const zkt::fmCFReleaseLater release(made);
      ASSERT_EQ(made == nullptr, failure != Failure::kNone);
      if (made == nullptr) return;
      EXPECT_TRUE(read(made));
      EXPECT_EQ(text, want);
      const int more = FailEach([&] { return read(made) != 0; },
                                [](bool wasRead, Failure inner) { EXPECT_EQ(wasRead, inner == Failure::kNone); });
      EXPECT_GE(more, 1);
    });
    EXPECT_GE(allocations, 2) << "characters and object";
  }
}

TEST_F(OutOfMemory, ANamedLocaleIsReset) {
  const host::StringRef name = MakeString("C.UTF-8");
  const int allocations =
      FailEach([&] { return host::ObjectRef(zkt::GetLocale(name.Get())); },
               [](const host::ObjectRef&, Failure) { EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C"); });
  EXPECT_GE(allocations, 2) << "names before and after";
}

TEST_F(OutOfMemory, TextThatCannotBeTerminatedReadsAsEmpty) {
  host::Host::Current().terminatesStringData = false;
  const host::StringRef string = MakeString("\xE9t\xE9", zkt::kEncodingISOLatin1);
  const tests::Debugging debugging;
  CapturedLog log;
  zkt::rbText text(string.Get());
  FailingNew failing(1, Failure::kAllLater);
  const std::string_view utf8 = text.GetUTF8();
  failing.Stop();
  host::Host::Current().terminatesStringData = true;
  EXPECT_EQ(utf8, "");
  EXPECT_EQ(utf8.data()[0], '\0');
  EXPECT_EQ(log.Take(), "ZKT Debug: String is not zero terminated. Fixed.\nZKT Debug: Out of memory\n");
}

}  // namespace
