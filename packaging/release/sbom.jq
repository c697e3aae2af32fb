# Makes the software bill of materials of a release, as SPDX 2.3:
#   jq -n --arg version V --arg commit C --arg created TIME --arg highway V --arg gcc V --arg unicode V
#     --arg package_sha256 SUM --args -f sbom.jq [PATH SHA1 SHA256]...
# Each PATH is the path of a library in the package.
def id: "SPDXRef-" + gsub("[^A-Za-z0-9.-]+"; "-");
def component($name; $version; $supplier; $license; $copyright): {
  SPDXID: ($name | id), $name, versionInfo: $version, $supplier, downloadLocation: "NOASSERTION", filesAnalyzed: false,
  licenseConcluded: $license, licenseDeclared: $license, copyrightText: $copyright
};
def relationship($from; $type; $to): {spdxElementId: $from, relationshipType: $type, relatedSpdxElement: $to};

(component("ZKTUtil"; $version; "Organization: The ZKTUtil authors"; "MIT"; "Copyright (c) 2026 The ZKTUtil authors") + {
  packageFileName: "ZKTUtil.xojo_plugin", primaryPackagePurpose: "LIBRARY", comment: "Built from commit \($commit).",
  checksums: [{algorithm: "SHA256", checksumValue: $package_sha256}]
}) as $plugin
| component("Highway"; $highway; "Organization: Google LLC"; "Apache-2.0"; "Copyright 2019-2022 Google LLC") as $highway
| component("libstdc++"; $gcc; "Organization: Free Software Foundation"; "GPL-3.0-or-later WITH GCC-exception-3.1";
    "Copyright Free Software Foundation, Inc.") as $runtime
| component("Unicode Character Database"; $unicode; "Organization: Unicode, Inc."; "Unicode-DFS-2016";
    "Copyright 1991-2022 Unicode, Inc.") as $characters
| [$ARGS.positional | _nwise(3) | {
    SPDXID: (.[0] | id), fileName: ("./" + .[0]), fileTypes: ["BINARY"],
    checksums: [{algorithm: "SHA1", checksumValue: .[1]}, {algorithm: "SHA256", checksumValue: .[2]}],
    licenseConcluded: "NOASSERTION", copyrightText: "NOASSERTION"
  }] as $files
| ($files | map(select(.fileName | contains("/Linux ")).SPDXID)) as $forLinux
| {
    spdxVersion: "SPDX-2.3", dataLicense: "CC0-1.0", SPDXID: "SPDXRef-DOCUMENT", name: "ZKTUtil-\($version)",
    documentNamespace: "urn:zktutil:\($version):\($package_sha256)",
    creationInfo: {$created, creators: ["Organization: The ZKTUtil authors", "Tool: ZKTUtil-release-\($version)"]},
    packages: [$plugin, $highway, $runtime, $characters],
    $files,
    relationships: [
      relationship("SPDXRef-DOCUMENT"; "DESCRIBES"; $plugin.SPDXID),
      relationship($plugin.SPDXID; "CONTAINS"; $files[].SPDXID),
      relationship($files[].SPDXID; "STATIC_LINK"; $highway.SPDXID),
      relationship($forLinux[]; "STATIC_LINK"; $runtime.SPDXID),
      relationship($forLinux[]; "STATIC_LINK"; $characters.SPDXID)
    ]
  }
