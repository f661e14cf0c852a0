#!/usr/bin/env bash
# Checks the dynamic symbol table of the shared library: it defines the public
# interface (the base, the exceptions, the data classes, the registry, the
# version) and nothing of the frame's internals.
#
#   bash tests/exports.sh LIBRARY [NM]
set -euo pipefail
library=$1
nm=${2:-nm}
symbols=$("$nm" -D --defined-only -C "$library" | sed -E 's/^[0-9a-f]+ [A-Za-z] //')

status=0
# Names of the public interface, behind the prefixes the compiler gives the
# data of a class.
public='^((typeinfo|typeinfo name|vtable|VTT|construction vtable|non-virtual thunk|virtual thunk|guard variable) (for|to) )?'
public+='(HALVANE::|QUILLET::|Converters::|(QuilletRoot|Quillet|OutOfRange|IncompleteDefinition|InvalidXml|BinaryParsing)Exception)'
leaked=$(grep -v -E "$public" <<<"$symbols" || true)
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
