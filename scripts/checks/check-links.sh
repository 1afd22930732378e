#!/usr/bin/env bash
# Checks every link, picture and anchor in the Markdown files. Of links to other sites, it checks only the syntax.
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh
scripts/install-packages.sh "${docs_packages[@]}"

# The packages are installed for Debian's own Python.
git ls-files -z --cached --others --exclude-standard -- '*.md' | xargs -0 /usr/bin/python3 scripts/checks/check_links.py
