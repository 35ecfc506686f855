#!/bin/sh
# The extension must export exactly one symbol of its own: Init_Quillonbin2xml.
set -eu
symbols=$(nm -D --defined-only "$1" | awk '{print $NF}' | grep -v -E '^(_init|_fini|__bss_start|_edata|_end)$' || true)
if [ "$symbols" != "Init_Quillonbin2xml" ]; then
  echo "unexpected exports from $1:"
  echo "$symbols"
  exit 1
fi
echo "exports: $symbols"
