#!/usr/bin/env bash
# Rewrites the files that contain the expected results of tests: the output of examples and scripts, the catalogues for
# each host version, the tables in the reference pages, and the Xojo projects. Review the differences before committing
# them.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

need "${test_packages[@]}"
build dev --target ZKTUtil sample_plugin xojo-host test_locales
say "writing the expected output"
ZKT_UPDATE_EXPECTED=1 ctest --preset dev --parallel "$(nproc)" -R '^(catalogue|example|script)_'
say "writing the tables of the reference pages"
tools/docs/declaration_tables.py --update docs/reference build/dev/bin/xojo-host
say "writing the Xojo projects"
tools/projects/make_projects.py --update
git status --short
