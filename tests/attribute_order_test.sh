#!/usr/bin/env bash
# Finds the barriers of the attributes' mark in PowerPC code: attribute_order_test.sh OBJDUMP OBJECT…
set -euo pipefail
for object in "${@:2}"; do
  [[ $object == */parse_pf_attrib.cpp.* ]] || continue
  code=$("$1" -d "$object")
  # Stored: the attributes, a barrier, the mark. Read: the mark, a barrier, the attributes.
  grep -w lwsync <<<"$code" >/dev/null
  grep -w isync <<<"$code" >/dev/null
  exit 0
done
exit 1
