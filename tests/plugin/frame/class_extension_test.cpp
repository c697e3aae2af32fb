// Tests how declarations of class extensions become declarations of global methods.
#include "frame/registration/class_extension.h"

#include <string>

#include "plugin/frame/good_records.h"

namespace {

using tests::kFunction;
using tests::kGoodAttribute;
using zkt::REALclassDefinition;
using zkt::REALmethodDefinition;

// The fuzz target fuzz_declarations compares the results for other declarations with those of an oracle.
TEST(ClassExtension, GetsTheObjectAsFirstParameter) {
  EXPECT_STREQ(zkt::AddClassParameter("F(a as string) as Boolean", "Graphics").get(),
               "F(extends ref as Graphics, a as string) as Boolean");
  EXPECT_STREQ(zkt::AddClassParameter(nullptr, "Graphics").get(), "(extends ref as Graphics)");
  EXPECT_STREQ(zkt::AddClassParameter("Width as Integer", nullptr).get(), "Width(extends ref as (null)) as Integer");
}

TEST(ClassExtension, BecomesOneMethodForEachFunctionAndSetter) {
  const std::string unreadable(1200, 'x');
  const std::string cut = "F(" + unreadable + " as Integer) as Integer";
  REALmethodDefinition rows[] = {
      {kFunction, kFunction, "Width as Integer", 0x200, 1, kGoodAttribute},
      {nullptr, kFunction, "Height as Integer", 0x200, 0, nullptr},
      {nullptr, nullptr, "Nothing", 0x200, 0, nullptr},
      {nullptr, kFunction, unreadable.c_str(), 0x200, 0, nullptr},
      {nullptr, kFunction, cut.c_str(), 0x200, 0, nullptr},
  };
  REALclassDefinition extension = {};
  extension.name = "Graphics";
  extension.methods = rows;
  extension.methodCount = std::size(rows);
  EXPECT_EQ(zkt::CountExtensionMethods(extension), 5u);
  REALmethodDefinition copies[6] = {};
  tests::CapturedLog log;
  EXPECT_EQ(zkt::CopyMethods(extension, copies, 1), 5u);
  EXPECT_EQ(log.Take(), "ZKT Debug: Error: Keine Klammer in der Deklaration " + unreadable.substr(0, 999) + "\n");
  EXPECT_STREQ(copies[1].declaration, "Width(extends ref as Graphics) as Integer");
  EXPECT_STREQ(copies[2].declaration, "Width(extends ref as Graphics, assigns value as Integer)");
  EXPECT_STREQ(copies[3].declaration, "Height(extends ref as Graphics, assigns value as Integer)");
  // The closing parenthesis was truncated, so the parameter "assigns value" is inserted at the first space.
  EXPECT_EQ(copies[4].declaration, ("F(extends(assigns value ref as Graphics, " + unreadable).substr(0, 999));
  EXPECT_EQ(copies[1].flags, 0x210u);
  EXPECT_EQ(copies[2].attributes, kGoodAttribute);
  EXPECT_EQ(copies[2].setter, nullptr);
  for (REALmethodDefinition& copy : copies) delete[] copy.declaration;
}

}  // namespace
