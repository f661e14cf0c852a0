#!/usr/bin/env bash
# Checks the dynamic symbol table of the shared library: it defines the public
# interface (the base, the exceptions, the data classes, the registry, the
# version) and nothing of the frame's internals.
#
#   bash tests/exports.sh LIBRARY [NM]
set -euo pipefail
library=$1
nm=${2:-nm}
table=$("$nm" -D --defined-only -C "$library")
symbols=$(sed -E 's/^[0-9a-f]+ [A-Za-z] //' <<<"$table")
# What the library defines strongly, less what instrumentation adds
# (AddressSanitizer's __odr_asan markers). Weak definitions of other
# libraries' inline functions and type information (Qt's and the standard
# library's, which an unoptimised build emits instead of inlining) are one
# copy among many that the dynamic linker folds together, not an interface
# of ours: only a weak symbol in our own names counts.
own='(HALVANE::|QUILLET::|Converters::)'
candidates=$(grep -v -E '^[0-9a-f]+ [VWu] ' <<<"$table" | sed -E 's/^[0-9a-f]+ [A-Za-z] //' | grep -v -E '^__(odr_)?asan' || true)
candidates+=$'\n'$(grep -E '^[0-9a-f]+ [VWu] ' <<<"$table" | sed -E 's/^[0-9a-f]+ [A-Za-z] //' | grep -E "$own" || true)

status=0
# Names of the public interface, behind the prefixes the compiler gives the
# data of a class.
public='^((typeinfo|typeinfo name|vtable|VTT|construction vtable|non-virtual thunk|virtual thunk|guard variable) (for|to) )?'
public+='(HALVANE::|QUILLET::|Converters::|(QuilletRoot|Quillet|OutOfRange|IncompleteDefinition|InvalidXml|BinaryParsing)Exception)'
leaked=$(grep -v -E "$public" <<<"$candidates" | grep -v '^$' || true)
internal=$(grep -E 'HALVANE::(frame|\(anonymous namespace\))::' <<<"$symbols" || true)
if [ -n "$leaked" ]; then
  echo "exports.sh: $library exports symbols outside the public interface:"
  echo "$leaked" | head -20
  status=1
fi
if [ -n "$internal" ]; then
  echo "exports.sh: $library exports the frame's internals:"
  echo "$internal" | head -20
  status=1
fi
# The interface itself is there: a class's accessor, its type information,
# an exception, the registry, the base and the version.
for wanted in 'HALVANE::ModeManager::SetRunningState(signed char)' 'typeinfo for HALVANE::AntennaPatterns' \
  'typeinfo for OutOfRangeException' 'HALVANE::schema::classes()' 'QUILLET::IQuilletObject::GetXmlString() const' \
  'HALVANE::libraryVersion()' 'Converters::ToString(QDateTime const&)'; do
  if ! grep -q -x -F "$wanted" <<<"$symbols"; then
    echo "exports.sh: $library does not export $wanted"
    status=1
  fi
done
[ $status -eq 0 ] && echo "exports.sh: $(wc -l <<<"$symbols") symbols, all of the public interface"
exit $status
