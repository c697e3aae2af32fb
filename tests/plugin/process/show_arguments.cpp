// A program that the tests start. It writes its arguments, a line feed, and its environment variables. A zero byte
// follows each argument and each variable.
#include <cstdio>

extern char** environ;

int main(int count, char** arguments) {
  const auto write = [](const char* text) {
    std::fputs(text, stdout);
    std::fputc('\0', stdout);
  };
  for (int i = 0; i < count; ++i) write(arguments[i]);
  std::fputc('\n', stdout);
  for (char** variable = environ; *variable != nullptr; ++variable) write(*variable);
  return 0;
}
