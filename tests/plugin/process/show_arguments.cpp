// The program that the tests start. Writes its arguments, an empty line and its environment, each followed by a zero
// byte.
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
