// Helpers for tests of the development host. They find the host's services by name, as plug-ins do, and run scripts.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>

#include "core/classes.h"
#include "core/host.h"
#include "declarations/catalogue.h"
#include "declarations/errors.h"
#include "language/interpreter.h"
#include "services/services.h"
#include "support/table.h"

namespace tests {

template <class Function>
Function Service(const char* name) {
  return reinterpret_cast<Function>(host::Resolve(name));
}

// Every reference must have been released when a test ends.
class ScriptTest : public testing::Test {
 protected:
  ~ScriptTest() override {
    const host::ReferenceReport references = host::ReportReferences();
    EXPECT_TRUE(references.IsBalanced()) << host::DescribeReferences(references);
  }

  // Returns what the script prints, followed by the error or exception that ends it.
  static std::string Run(std::string_view script) {
    const host::Catalogue catalogue(host::Host::Current());
    std::ostringstream out;
    host::Interpreter interpreter(catalogue, out);
    try {
      interpreter.Run(script);
    } catch (const host::ScriptError& error) {
      out << host::Describe(error, "");
    } catch (const host::XojoException& exception) {
      out << "line " << exception.Line() << ": " << exception.what();
    }
    return out.str();
  }

  static void ExpectTable(const std::string& path) {
    for (const Row& row : ReadTable(path, 2)) EXPECT_EQ(Run(row[0]), row[1]) << row[0];
  }
};

}  // namespace tests
