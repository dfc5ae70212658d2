#!/usr/bin/env bash
# Fails when a C++ file is not as clang-format would leave it.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
find src hosts tests tools bench -name '*.cpp' -o -name '*.h' | sort | xargs clang-format --dry-run --Werror
