// The exports of a Mach-O library stand in a tree whose edges are pieces of names.
#include "doctor/library.h"

namespace doctor {

namespace {

class TreeReader {
 public:
  explicit TreeReader(Bytes tree) : tree_(tree) {}

  // No library has as many; a tree that refers to itself would go on for ever.
  void ReadNode(std::uint64_t offset, const std::string& prefix, unsigned depth = 0) {
    if (depth > 200 || ++nodes_ > 100'000) throw DamagedFile("its export table does not end");
    const std::uint64_t size = ReadNumber(offset);
    if (size != 0) names.push_back(prefix);
    offset += size;
    const auto children = tree_.Read<std::uint8_t>(offset++);
    for (unsigned i = 0; i < children; ++i) {
      const std::string label = tree_.Text(offset);
      offset += label.size() + 1;
      ReadNode(ReadNumber(offset), prefix + label, depth + 1);
    }
  }

  std::vector<std::string> names;

 private:
  // Seven bits in each byte, the lowest first; moves the offset behind them.
  std::uint64_t ReadNumber(std::uint64_t& offset) const {
    std::uint64_t number = 0;
    for (unsigned shift = 0; shift < 63; shift += 7) {
      const auto byte = tree_.Read<std::uint8_t>(offset++);
      number |= std::uint64_t{byte & 0x7Fu} << shift;
      if ((byte & 0x80) == 0) return number;
    }
    throw DamagedFile("a number in its export table does not end");
  }

  Bytes tree_;
  unsigned nodes_ = 0;
};

}  // namespace

std::vector<std::string> ReadExportTree(Bytes tree) {
  if (tree.Size() == 0) return {};
  TreeReader reader(tree);
  reader.ReadNode(0, "");
  return std::move(reader.names);
}

}  // namespace doctor
