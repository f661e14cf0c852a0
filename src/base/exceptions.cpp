// Exceptions of the data objects: a message, readable as QString and as UTF-8.
#include "exceptions.h"

QuilletRootException::QuilletRootException(const QString &message)
    : m_message(message), m_utf8(message.toUtf8())
{
}

QuilletRootException::~QuilletRootException() = default;

const char *QuilletRootException::what() const noexcept
{
    return m_utf8.constData();
}
