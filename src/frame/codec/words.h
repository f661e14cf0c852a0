// Numbers in a byte buffer, in the byte order a QDataStream was set to. The
// binary codecs write and read their words through these.
#ifndef HALVANE_FRAME_WORDS_H
#define HALVANE_FRAME_WORDS_H

#include <QtCore/QtEndian>

namespace HALVANE {
namespace frame {

template <class T>
inline void storeWord(char *at, T v, bool bigEndian)
{
    if (bigEndian)
        qToBigEndian(v, at);
    else
        qToLittleEndian(v, at);
}

template <class T>
inline T loadWord(const char *at, bool bigEndian)
{
    return bigEndian ? qFromBigEndian<T>(at) : qFromLittleEndian<T>(at);
}

} // namespace frame
} // namespace HALVANE

#endif
