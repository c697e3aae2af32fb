#include "platform/linux/decomposition.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace zkt {

namespace {

// A row stores its character in the upper bits, so that a binary search can find the row. A character has 21 bits.
constexpr int kCharacterBits = 21;
constexpr std::uint64_t kCharacterMask = (1U << kCharacterBits) - 1;
constexpr int kClassBits = 8;

// Packs a character with the one or two characters that it decomposes into. `second` is 0 if there is only one.
constexpr std::uint64_t D(std::uint64_t c, std::uint64_t first, std::uint64_t second) {
  return c << (2 * kCharacterBits) | first << kCharacterBits | second;
}

// Packs a character with its combining class. Characters that are not listed have class 0.
constexpr std::uint32_t C(std::uint32_t c, std::uint32_t combiningClass) { return c << kClassBits | combiningClass; }

#include "platform/linux/decomposition_table.inc"

// Returns the row for a character, or null if there is none.
template <class Row, std::size_t count>
const Row* FindRow(const Row (&rows)[count], char32_t c, int shift) {
  const auto isBefore = [&](Row row, char32_t wanted) { return (row >> shift) < wanted; };
  const Row* const found = std::lower_bound(std::begin(rows), std::end(rows), c, isBefore);
  return found != std::end(rows) && (*found >> shift) == c ? found : nullptr;
}

int CombiningClassOf(char32_t c) {
  const std::uint32_t* const row = FindRow(kCombiningClasses, c, kClassBits);
  return row != nullptr ? static_cast<int>(*row & 0xFF) : 0;
}

// Appends the parts of a Hangul syllable, which are computed from its number (The Unicode Standard, 3.12). Returns
// false if the character is not a Hangul syllable.
bool AppendHangul(std::u32string& characters, char32_t c) {
  constexpr char32_t kFirstSyllable = 0xAC00;
  constexpr char32_t kVowels = 21;
  constexpr char32_t kTrailing = 28;
  constexpr char32_t kSyllables = 19 * kVowels * kTrailing;
  if (c < kFirstSyllable || c >= kFirstSyllable + kSyllables) return false;
  const char32_t number = c - kFirstSyllable;
  characters.push_back(0x1100 + number / (kVowels * kTrailing));
  characters.push_back(0x1161 + number / kTrailing % kVowels);
  if (number % kTrailing != 0) characters.push_back(0x11A7 + number % kTrailing);
  return true;
}

// Only the first character of a pair can decompose further.
void AppendDecomposed(std::u32string& characters, char32_t c) {
  if (AppendHangul(characters, c)) return;
  const std::uint64_t* const row = FindRow(kDecompositions, c, 2 * kCharacterBits);
  if (row == nullptr) {
    characters += c;
    return;
  }
  AppendDecomposed(characters, static_cast<char32_t>(*row >> kCharacterBits & kCharacterMask));
  if (const auto second = static_cast<char32_t>(*row & kCharacterMask)) characters += second;
}

std::u32string Decompose(std::u16string_view text) {
  std::u32string characters;
  characters.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t c = text[i];
    if (c >= 0xD800 && c < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF)
      c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00U);
    AppendDecomposed(characters, c);
  }
  return characters;
}

// Sorts every run of combining marks by class. Marks of the same class keep their order.
void OrderMarks(std::u32string& characters) {
  const auto isMark = [](char32_t c) { return CombiningClassOf(c) != 0; };
  const auto isBefore = [](char32_t a, char32_t b) { return CombiningClassOf(a) < CombiningClassOf(b); };
  for (auto end = characters.begin(); end != characters.end();) {
    const auto begin = std::find_if(end, characters.end(), isMark);
    end = std::find_if_not(begin, characters.end(), isMark);
    std::stable_sort(begin, end, isBefore);
  }
}

}  // namespace

std::u16string DecomposeCanonically(std::u16string_view text) {
  std::u32string characters = Decompose(text);
  OrderMarks(characters);
  std::u16string decomposed;
  decomposed.reserve(characters.size());
  for (const char32_t c : characters) {
    if (c < 0x10000) {
      decomposed += static_cast<char16_t>(c);
    } else {
      decomposed += static_cast<char16_t>(0xD7C0 + (c >> 10));
      decomposed += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
    }
  }
  return decomposed;
}

}  // namespace zkt
