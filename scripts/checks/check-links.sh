#!/usr/bin/env bash
# Checks every link, picture and anchor in the Markdown files of the tree; addresses of other sites only for their form.
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh
scripts/install-packages.sh "${docs_packages[@]}"

# Debian's own Python, for which the packages are.
git ls-files -z --cached --others --exclude-standard -- '*.md' | xargs -0 /usr/bin/python3 scripts/checks/check_links.py
