#!/bin/sh
# Runs a command under a stack of 1 MB, that of an emulated processor included.
# Usage: small_stack.sh COMMAND [ARGUMENT...]
set -eu
# Every shell of a Linux system knows it.
# shellcheck disable=SC3045
ulimit -s 1024
QEMU_STACK_SIZE=1048576
export QEMU_STACK_SIZE
exec "$@"
