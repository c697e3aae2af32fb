// For tests of ConsoleExecuteZKT. Starts real programs and captures their output.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "process/console_execute.h"
#include "support/child_process.h"
#include "support/host_fixture.h"

namespace tests {

using Texts = std::vector<std::string>;

class ConsoleExecute : public HostTest {
 protected:
  struct Outcome {
    int status = -1;  // as returned by waitpid
    std::string output;
  };

  static host::ArrayRef MakeArray(const Texts& texts, std::uint32_t encoding = zkt::kEncodingUTF8) {
    host::ArrayRef array(
        host::MakeArray({host::TypeKind::kString, false, {}}, static_cast<std::int64_t>(texts.size()) - 1));
    for (std::size_t i = 0; i < texts.size(); ++i)
      host::ElementAt<REALstringStruct*>(array.Get(), static_cast<std::int64_t>(i)) =
          host::MakeString(texts[i], encoding);
    return array;
  }

  static _REALarrayString* Native(const host::ArrayRef& array) {
    return reinterpret_cast<_REALarrayString*>(array.Get());
  }

  // Calls `start`, which starts a program, and waits until the program ends. Captures the program's standard output
  // through a pipe.
  template <class Start>
  static Outcome Run(Start start) {
    int ends[2];
    EXPECT_EQ(::pipe(ends), 0);
    const int output = ::dup(STDOUT_FILENO);
    ::dup2(ends[1], STDOUT_FILENO);
    ::close(ends[1]);
    const std::int64_t child = start();
    ::dup2(output, STDOUT_FILENO);
    ::close(output);
    Outcome outcome;
    char buffer[4096];
    for (ssize_t count; (count = ::read(ends[0], buffer, sizeof buffer)) > 0;)
      outcome.output.append(buffer, static_cast<std::size_t>(count));
    ::close(ends[0]);
    EXPECT_GT(child, 0);
    EXPECT_EQ(::waitpid(static_cast<pid_t>(child), &outcome.status, 0), child);
    return outcome;
  }

  static std::int64_t Execute(std::string_view path, const Texts& arguments, const Texts& environment) {
    return zkt::ConsoleExecuteZKT(MakeString(path).Get(), Native(MakeArray(arguments)), Native(MakeArray(environment)));
  }

  // Returns the expected output of ZKT_SHOW_ARGUMENTS.
  static std::string Shown(const Texts& arguments, const Texts& environment) {
    std::string shown;
    for (const std::string& argument : arguments) shown += argument + '\0';
    shown += '\n';
    for (const std::string& variable : environment) shown += variable + '\0';
    return shown;
  }
};

}  // namespace tests
