// The meaning and remedy of each kind of finding.
#pragma once

namespace doctor {

struct Advice {
  const char* meaning;
  const char* remedy;
};

inline constexpr Advice kDamaged{"no system can load it", "rebuild it or download it again"};
inline constexpr Advice kNoEntryPoint{"Xojo does not recognize it as a plug-in",
                                      "declare REALPluginMain as extern \"C\", with default visibility"};
inline constexpr Advice kExports{"a symbol with the same name in another plug-in can replace its own",
                                 "export only REALPluginMain: -Wl,--version-script=FILE on Linux, "
                                 "-exported_symbols_list FILE on macOS"};
inline constexpr Advice kNeedsLibrary{"it cannot be loaded on a system without these libraries",
                                      "link them statically, or open them with dlopen when they are used"};
inline constexpr Advice kOldLibrary{"it cannot be loaded on this machine",
                                    "build it on the oldest system that it must support"};
inline constexpr Advice kExecutableStack{"hardened systems reject it, and data from a stack overrun can run as code",
                                         "link with -Wl,-z,noexecstack; mark assembly files with .note.GNU-stack"};
inline constexpr Advice kNoRelro{"a buffer overrun can redirect its calls", "link with -Wl,-z,relro"};
inline constexpr Advice kWritableCode{"hardened systems reject it, and a buffer overrun can replace code",
                                      "link with -Wl,-z,separate-code and without -Wl,--omagic"};
inline constexpr Advice kChangedCode{"hardened systems reject it, and processes cannot share its code in memory",
                                     "compile all files with -fPIC"};
inline constexpr Advice kLibrarySearch{"it may load libraries other than the system's", "link without -rpath"};
inline constexpr Advice kLateBinding{"a missing symbol ends the application at the first call, not at loading",
                                     "link with -Wl,-z,now"};
inline constexpr Advice kSignature{"macOS on Apple silicon rejects it",
                                   "sign it after the last change: codesign --sign"};
inline constexpr Advice kVersion{"bug reports name the wrong version", "build everything from the same sources"};
inline constexpr Advice kFlatNamespace{"its calls may reach functions of other libraries",
                                       "link without -flat_namespace"};
inline constexpr Advice kNoUuid{"crash reports cannot be matched with debug files", "link without -no_uuid"};
inline constexpr Advice kBuildFolder{"it reveals the machine that built it, and a build elsewhere differs",
                                     "compile with -ffile-prefix-map=FOLDER=., or without -g"};
inline constexpr Advice kPath{"unpacking it can overwrite files elsewhere", "pack a folder, with relative paths"};
inline constexpr Advice kIgnored{"Xojo copies libraries only from folders such as Build Resources/Linux x86-64",
                                 "move it to the folder of its system, or leave it out"};
inline constexpr Advice kUnsupported{
    "applications for this processor cannot use the plug-in",
    "also build it for this processor, or move it to the folder for its own processor"};
inline constexpr Advice kNoLibrary{
    "Xojo finds no plug-in in it",
    "put each library into the folder for its system, such as NAME/Build Resources/Linux x86-64"};
inline constexpr Advice kTimes{"packages built from the same sources differ",
                               "give all files the same modification time"};
inline constexpr Advice kName{"Xojo does not recognize it as a single plug-in", "rename it to NAME.xojo_plugin"};
inline constexpr Advice kPromise{"the package does not match the page", "correct the build or the page"};

}  // namespace doctor
