#!/bin/bash
# Kills the program 240 times (or as often as the first argument says) and looks at its files after each.
#   bench/kill-rounds.sh [ROUNDS] [BUILD]      BUILD: a build folder with tests, build/release by default
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
build=$PWD/${2:-build/release}
export KALVO_KILL_ROUNDS=${1:-240} KALVO_BIN=$build/bin KALVO_SOURCE=$PWD QT_QPA_PLATFORM=offscreen
exec "$build/bin/test_system" --gtest_filter='KillTest.LeavesEveryFile*'
