// Runs a fuzz target on every file in a corpus.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "target.h"

int main(int argc, char** argv) {
  int count = 0;
  for (int i = 1; i < argc; ++i)
    for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
      std::ifstream file(entry.path(), std::ios::binary);
      const std::vector<char> content{std::istreambuf_iterator<char>(file), {}};
      // Standard error is unbuffered, so if the process crashes, the last name printed is that of the file that caused
      // the crash.
      std::fprintf(stderr, "%s\n", entry.path().c_str());
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
      ++count;
    }
  fuzz::Require(count > 0, "the corpus contains files");
}
