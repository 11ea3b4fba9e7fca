#!/usr/bin/env bash
# scripts/manual.sh [DIRECTORY]
#
# Makes the manual of the headers' comments and of the pages in docs/manual, as HTML with a search and an index and as pages of section 3, in manual-out/ or DIRECTORY, and
# fails unless every function is found by all three and every link leads somewhere. Opens with manual-out/html/index.html; man -M manual-out/man tevsFIR_32f
set -uo pipefail
out=$(realpath -m -- "${1:-$(dirname "$0")/../manual-out}")
cd "$(dirname "$0")/.." || exit 1
source scripts/packages.sh
# A package's build has them as build dependencies, and installs nothing itself.
[[ ${DEB_BUILD_ARCH:-} ]] || need "${kManualPackages[@]}"

source=build/manual
rm -rf "$source" "$out/html" "$out/man"
mkdir -p build "$out/man/man1" && cp -r docs/manual "$source" && cp docs/recording.png "$source/" || fail "cannot write to build and $out"
"$kPython" scripts/manual.py include "$source" "$out/man" || fail "the headers' comments cannot be read"
# Whatever Sphinx warns of is a fault: a page that nothing leads to, a name that is no function's.
"$kPython" -m sphinx -q -W --keep-going -b html -d "$source/doctrees" "$source" "$out/html" || fail "the manual has faults"
rm -f "$out/html/.buildinfo"
cp tool/tevs.1 "$out/man/man1/" || fail "cannot write to $out"
"$kPython" scripts/manual.py --check include "$out/html" "$out/man" || fail "the manual is not complete"
find "$out/man" -name '*.[13]' ! -size -100c -exec mandoc -T lint -W error {} + || fail "pages of the manual are not as mdoc wants them"
echo "$out/html/index.html"
