#!/bin/sh
# Starts one Wine server that stays for the whole test run (each Windows test program then
# starts in a fraction of a second instead of starting a server of its own), and makes the
# Wine prefix (WINEPREFIX, in the build folder) the first time.
# Usage: start-wine.sh <wineserver> <wine64>
set -eu
wineserver="$1"
wine="$2"
mkdir -p "$WINEPREFIX"
# The server and the programs that the prefix starts outlive this script: their output
# goes nowhere, or the test runner would wait for them to close it.
if ! "$wineserver" -p </dev/null >/dev/null 2>&1; then
  # wineserver refuses to start a second server for one prefix.
  echo "a Wine server was running for $WINEPREFIX already; the tests use it"
fi
# wineboot starts the prefix's own programs (services, device manager), which then serve
# every test program; started by a test instead, they would hold its output open. The
# first time it makes the prefix too.
if [ -f "$WINEPREFIX/system.reg" ]; then
  "$wine" wineboot </dev/null >/dev/null 2>&1
else
  echo "making the Wine prefix $WINEPREFIX (once per build folder)"
  "$wine" wineboot --init </dev/null >/dev/null 2>&1
fi
echo "Wine server running for $WINEPREFIX"
