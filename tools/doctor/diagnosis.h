// What a plug-in package or library suffers from.
#pragma once

#include <string>
#include <vector>

#include "doctor/library.h"
#include "doctor/package.h"

namespace doctor {

struct Finding {
  bool isFault = false;  // it keeps the plug-in from working somewhere; else only strictness minds
  std::string text;
};

struct Patient {
  std::string file;  // its path, inside the package if there is one
  Library library;
  std::vector<Finding> findings;
};

struct Diagnosis {
  bool isPackage = false;
  std::vector<Patient> patients;  // one for each library and processor
  std::vector<Finding> findings;  // about the whole
};

// The machine that this program runs on.
struct Machine {
  System system = System::Linux;
  std::string architecture;
  Version libc;
};
Machine ThisMachine();

// Examines a package or a single library. `unwanted` are texts that must not stand in a library, such as the path of
// the machine that built it; the places where such machines keep their files are looked for in any case. What is not as
// it should be is in the findings, unreadable files included; throws only if the path cannot be read.
Diagnosis Diagnose(const std::string& path, const std::vector<std::string>& unwanted);

// The same for the files of a package that are already read.
Diagnosis DiagnosePackage(const std::vector<PackagedFile>& files, const std::vector<std::string>& unwanted);

// What this project's own package is held to beyond what any plug-in should be: all its libraries, none that needs a
// newer system than promised.
std::vector<Finding> CheckPromises(const Diagnosis& diagnosis);

}  // namespace doctor
