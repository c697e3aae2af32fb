#!/usr/bin/env bash
# Unpacks the packages that arm64 builds of the development host and the tests need at build time and at run time.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

exec packaging/fetch_system.sh arm64 bookworm "$PWD/$package_folder/arm64-system" libstdc++6 libffi-dev libedit-dev \
  libzip-dev libmd-dev libcairo2-dev libutf8proc-dev libpangocairo-1.0-0 fonts-dejavu-core fonts-dejavu-extra \
  fonts-sawarabi-gothic
