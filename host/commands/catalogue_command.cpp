// xojo-host catalogue: lists what the plug-in declares to this host, and what it declares differently to other host
// versions.
#include <algorithm>
#include <functional>
#include <iostream>
#include <sstream>

#include "commands/catalogue_text.h"
#include "commands/commands.h"
#include "core/child_output.h"
#include "core/host.h"
#include "declarations/catalogue.h"
#include "services/plugin_library.h"

namespace host {

namespace {

// A line of the listing. Its key excludes the attributes, which may differ between host versions.
struct Line {
  std::string record;  // the key of the module or class that the line introduces or belongs to
  std::string key;
  std::string text;
};

struct Listing {
  std::string title;
  std::vector<Line> lines;

  const Line* Find(const std::string& key) const {
    const auto found = std::ranges::find(lines, key, &Line::key);
    return found != lines.end() ? &*found : nullptr;
  }
};

Listing Read(const std::string& text) {
  Listing listing;
  std::istringstream input(text);
  std::getline(input, listing.title);
  std::string record;
  for (std::string line; std::getline(input, line);) {
    const bool isMember = line.starts_with(' ');
    const std::string name = line.substr(0, line.find("  ", 2));
    if (!isMember) record = name;
    listing.lines.push_back({record, isMember ? record + name : name, line});
  }
  return listing;
}

// Returns the keys that occur in both listings, in the order of the first listing.
std::vector<std::string> SharedKeys(const Listing& listing, const Listing& other) {
  std::vector<std::string> keys;
  for (const Line& line : listing.lines)
    if (other.Find(line.key) != nullptr) keys.push_back(line.key);
  return keys;
}

// Prints the changes from `before` to `listing`.
void ShowDifference(const Listing& before, const Listing& listing) {
  std::cout << "== " << listing.title << '\n';
  if (SharedKeys(before, listing) != SharedKeys(listing, before)) std::cout << "order changed\n";
  std::string record;
  const auto show = [&](char sign, const Line& line) {
    if (line.record != record && line.key != line.record) std::cout << "  " << line.record << '\n';
    record = line.record;
    std::cout << sign << ' ' << line.text << '\n';
  };
  for (const Line& line : before.lines) {
    const Line* const now = listing.Find(line.key);
    if (now != nullptr && now->text != line.text) show('~', *now);
    // The members of a removed record are not listed individually.
    if (now == nullptr && (line.key == line.record || listing.Find(line.record) != nullptr)) show('-', line);
  }
  for (const Line& line : listing.lines)
    if (before.Find(line.key) == nullptr) show('+', line);
}

// Returns the listing for a host of the given version; 0 means a host that does not report its version. Loads the
// plug-in in a child process, because a plug-in can register only once per process.
std::string TextAt(const std::string& plugin, double version) {
  return OutputOf([&] {
    Host::Current().version = version;
    if (version == 0) Host::Current().withheld.insert("REALGetRBVersion");
    LoadPlugin(plugin);
    const Catalogue compiled(Host::Current());  // throws if a declaration does not compile
    WriteCatalogue(std::cout, Host::Current());
  });
}

}  // namespace

int RunCatalogue(const std::string& plugin, const std::vector<double>& otherVersions) {
  const double version = Host::Current().version;
  std::vector<double> older, newer;
  for (const double other : otherVersions) (other < version ? older : newer).push_back(other);
  std::ranges::sort(older, std::greater());
  std::ranges::sort(newer);
  const std::string text = TextAt(plugin, version);
  std::cout << text;
  if (!otherVersions.empty())
    std::cout
        << "\nDifferences on older hosts, then on newer ones. Each host is compared with the one before it, and the "
           "first of\neach group with the host above. + added, - removed, ~ changed to this.\n\n";
  for (const auto& versions : {older, newer}) {
    Listing before = Read(text);
    for (const double other : versions) {
      Listing listing = Read(TextAt(plugin, other));
      ShowDifference(before, listing);
      before = std::move(listing);
    }
  }
  return 0;
}

}  // namespace host
