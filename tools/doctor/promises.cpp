// The documentation states these figures; a build that needs more must not go out unnoticed.
#include <algorithm>

#include "doctor/diagnosis.h"

namespace doctor {

namespace {

struct Promise {
  std::string_view file;
  System system;
  std::string_view architecture;
  Version minimum;
};
constexpr Promise kPromises[] = {
    {"ZKTUtil/Build Resources/Linux arm64/ZKTUtil.so", System::Linux, "arm64", {2, 17}},
    {"ZKTUtil/Build Resources/Linux x86-64/ZKTUtil.so", System::Linux, "x86-64", {2, 17}},
    {"ZKTUtil/Build Resources/Mac Universal/ZKTUtil.dylib", System::MacOS, "arm64", {11, 0}},
    {"ZKTUtil/Build Resources/Mac Universal/ZKTUtil.dylib", System::MacOS, "x86-64", {10, 13}},
};

}  // namespace

std::vector<Finding> CheckPromises(const Diagnosis& diagnosis) {
  std::vector<Finding> findings;
  if (!diagnosis.isPackage) return findings;
  for (const Promise& promise : kPromises) {
    const auto found = std::find_if(diagnosis.patients.begin(), diagnosis.patients.end(), [&](const Patient& patient) {
      return patient.file == promise.file && patient.library.system == promise.system &&
             patient.library.architecture == promise.architecture;
    });
    const std::string what = std::string(promise.file) + " for " + std::string(promise.architecture);
    if (found == diagnosis.patients.end()) {
      findings.push_back({true, "there is no " + what});
    } else if (found->library.minimum > promise.minimum) {
      findings.push_back(
          {false, what + " needs " + ToText(found->library.minimum) + ", promised is " + ToText(promise.minimum)});
    } else if (found->library.name.find("ZKTUtil") == std::string::npos) {
      findings.push_back({false, what + " calls itself " + found->library.name});
    }
  }
  if (diagnosis.patients.size() > std::size(kPromises)) findings.push_back({false, "there are further libraries"});
  return findings;
}

}  // namespace doctor
