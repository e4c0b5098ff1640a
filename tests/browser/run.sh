#!/bin/bash
# run.sh SCRIPT [ARG...] - runs a test that needs a browser, with Debian's python, which has the driver.
# ./test has both installed before anything is built; a test that was started otherwise has not.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
packages=(chromium chromium-driver python3-selenium tidy)
if ! [ -x /usr/bin/chromium ] || ! [ -x /usr/bin/chromedriver ] || ! [ -x /usr/bin/tidy ] ||
    ! /usr/bin/python3 -c 'import selenium' 2>/dev/null; then
    # shellcheck disable=SC2034
    (root=$here/../.. me=browser && . "$root/packaging/prepare.sh" && install_missing "${packages[@]}")
fi
export PYTHONDONTWRITEBYTECODE=1
exec /usr/bin/python3 "$@"
