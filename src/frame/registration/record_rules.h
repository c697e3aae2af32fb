// The rules for class, module and class extension records, with their log messages, in the order of the checks. Do not
// change the messages, not even to correct their grammar, because plug-in authors search their logs for them.
#pragma once

#include <array>
#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

enum class RecordKind { kClass, kModule, kExtension };

// The arrays in a record.
enum class Part {
  kProperties,
  kMethods,
  kEvents,
  kEventInstances,
  kConstants,
  kSharedProperties,
  kSharedMethods,
  kAttributes,
  kDelegates,
  kEnums,
  kStructures,
  kPartCount,
  kNone = kPartCount,
};

enum class Defect {
  kVersion,        // the version is wrong; logs the name, the version found and the version expected
  kNoName,         // the name is null; the message has no arguments
  kHasSuper,       // there is a superclass; logs its name
  kHasData,        // there is instance data; logs the name and a number, as do the next four defects
  kSystemWord,     // the field reserved for the host is not 0
  kContradiction,  // count and array contradict each other, or the count exceeds the limit
  kNotAllowed,     // the count is not 0 or the array is not null
  kPointless,      // the count is not 0; a warning, logged after the member checks
  kLowercaseName,  // the name starts with a lowercase letter; logs the name
};

struct RecordRule {
  RecordKind kind;
  Defect defect;
  const char* text;
  Part part = Part::kNone;
  std::uint64_t limit = 1000;
};

// clang-format off
inline constexpr RecordRule kRecordRules[] = {
    {RecordKind::kClass, Defect::kVersion,       "Error: The class %s has the wrong kCurrentREALControlVersion: %d vs. %d"},
    {RecordKind::kClass, Defect::kNoName,        "Error: A class without name."},
    {RecordKind::kClass, Defect::kSystemWord,    "Error: The class %s has the wrong forSystemUse value: %d"},
    {RecordKind::kClass, Defect::kContradiction, "Error: The class %s has the wrong propertyCount value: %d", Part::kProperties},
    {RecordKind::kClass, Defect::kContradiction, "Error: The class %s has the wrong methodCount value: %d", Part::kMethods},
    {RecordKind::kClass, Defect::kContradiction, "Error: The class %s has the wrong eventCount value: %d", Part::kEvents},
    {RecordKind::kClass, Defect::kContradiction, "Error: The class %s has the wrong eventInstanceCount value: %d", Part::kEventInstances},
    {RecordKind::kClass, Defect::kContradiction, "Error: The class %s has the wrong constantCount value: %d", Part::kConstants, 4000},
    {RecordKind::kClass, Defect::kContradiction, "Error: The class %s has the wrong sharedPropertyCounttionCount value: %d", Part::kSharedProperties},
    {RecordKind::kClass, Defect::kContradiction, "Error: The class %s has the wrong sharedMethodCount value: %d", Part::kSharedMethods},
    {RecordKind::kClass, Defect::kContradiction, "Error: The class %s has the wrong attributeCount value: %d", Part::kAttributes},
    {RecordKind::kClass, Defect::kContradiction, "Error: The class %s has the wrong delegateCount value: %d", Part::kDelegates},
    {RecordKind::kClass, Defect::kContradiction, "Error: The class %s has the wrong enumCount value: %d", Part::kEnums},
    {RecordKind::kClass, Defect::kContradiction, "Error: The class extension %s has wrong attributes: %d", Part::kAttributes},

    {RecordKind::kModule, Defect::kVersion,       "Error: The module %s has the wrong kCurrentREALControlVersion: %d vs. %d"},
    {RecordKind::kModule, Defect::kNoName,        "Error: A module without name."},
    {RecordKind::kModule, Defect::kContradiction, "Error: The module %s has the wrong propertyCount value: %d", Part::kProperties},
    {RecordKind::kModule, Defect::kContradiction, "Error: The module %s has the wrong methodCount value: %d", Part::kMethods},
    {RecordKind::kModule, Defect::kContradiction, "Error: The module %s has the wrong structureCount value: %d", Part::kStructures},
    {RecordKind::kModule, Defect::kContradiction, "Error: The module %s has the wrong enumCount value: %d", Part::kEnums},
    {RecordKind::kModule, Defect::kContradiction, "Error: The module %s has the wrong attributeCount value: %d", Part::kAttributes},
    {RecordKind::kModule, Defect::kContradiction, "Error: The module %s has the wrong delegateCount value: %d", Part::kDelegates},

    {RecordKind::kExtension, Defect::kVersion,       "Error: The class extension %s has the wrong kCurrentREALControlVersion: %d vs. %d"},
    {RecordKind::kExtension, Defect::kNoName,        "Error: A class extension without name."},
    {RecordKind::kExtension, Defect::kHasSuper,      "Error: A class extension can't have super name: %s"},
    {RecordKind::kExtension, Defect::kHasData,       "Error: The class extension %s has the dataSize value: %d"},
    {RecordKind::kExtension, Defect::kSystemWord,    "Error: The class extension %s has the wrong forSystemUse value: %d"},
    {RecordKind::kExtension, Defect::kContradiction, "Error: The class extension %s has the wrong propertyCount value: %d", Part::kProperties},
    {RecordKind::kExtension, Defect::kContradiction, "Error: The class extension %s has the wrong methodCount value: %d", Part::kMethods},
    {RecordKind::kExtension, Defect::kNotAllowed,    "Error: The class extension %s has events: %d", Part::kEvents},
    {RecordKind::kExtension, Defect::kNotAllowed,    "Error: The class extension %s has event instances: %d", Part::kEventInstances},
    {RecordKind::kExtension, Defect::kNotAllowed,    "Error: The class extension %s has constants: %d", Part::kConstants},
    {RecordKind::kExtension, Defect::kNotAllowed,    "Error: The class extension %s has shared Properties: %d", Part::kSharedProperties},
    {RecordKind::kExtension, Defect::kNotAllowed,    "Error: The class extension %s has shared Methods: %d", Part::kSharedMethods},
    {RecordKind::kExtension, Defect::kNotAllowed,    "Error: The class extension %s has delegates %d", Part::kDelegates},
    {RecordKind::kExtension, Defect::kNotAllowed,    "Error: The class extension %s has enums: %d", Part::kEnums},
    {RecordKind::kExtension, Defect::kContradiction, "Error: The class extension %s has wrong attributes: %d", Part::kAttributes},
    {RecordKind::kExtension, Defect::kPointless,     "Warning: The class extension %s has the propertyCount value: %d", Part::kProperties},
    {RecordKind::kExtension, Defect::kPointless,     "Warning: The class extension %s has the constantCount value: %d", Part::kConstants},
    {RecordKind::kExtension, Defect::kPointless,     "Warning: The class extension %s has the eventCount value: %d", Part::kEvents},
    {RecordKind::kExtension, Defect::kPointless,     "Warning: The class extension %s has the sharedProperties value: %d", Part::kSharedProperties},
    {RecordKind::kExtension, Defect::kPointless,     "Warning: The class extension %s has the sharedMethods value: %d", Part::kSharedMethods},
    {RecordKind::kExtension, Defect::kLowercaseName, "Error: The class extension name %s does not start with capital letter."},
};
// clang-format on

}  // namespace zkt
