// Layout of the binary representation that the whole-object operations write
// (GetBinaryRepresentation, SaveBinary, the compressed variant):
//
//   bytes 0..3   magic "HVB1"
//   int32        object tag: the class id (GetObjectType) of the object
//   int32        object length
//   ...          the field records of the tagged form
//
// Everything after the magic is GetBinary(stream, classId, true). A reader
// refuses a block whose tag is not its own class id, naming both classes.
// Streams made by these operations are big-endian with the version pinned to
// kBinaryStreamVersion; a caller's stream is used as the caller set it up.
// The compressed variant is qCompress of the whole block; a reader refuses
// a claimed size above kMaxUncompressedSize or above kMaxCompressionRatio
// times the compressed size before anything is allocated.
#ifndef HALVANE_BASE_BINARYHEADER_H
#define HALVANE_BASE_BINARYHEADER_H

#include <QtCore/QDataStream>

namespace QUILLET {

constexpr char kBinaryMagic[4] = {'H', 'V', 'B', '1'};
constexpr int kBinaryStreamVersion = QDataStream::Qt_5_12;
constexpr qint64 kMaxUncompressedSize = 256 * 1024 * 1024;
constexpr qint64 kMaxCompressionRatio = 1032; // zlib cannot do better
constexpr qint64 kCompressedClaimSlack = 64;   // for tiny blocks

/*! Sets up a stream made by the whole-object operations. */
inline void pinStream(QDataStream &stream)
{
    stream.setVersion(kBinaryStreamVersion);
    stream.setByteOrder(QDataStream::BigEndian);
}

} // namespace QUILLET

#endif
