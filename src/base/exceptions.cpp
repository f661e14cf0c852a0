// Exceptions of the data objects: a message.
#include "exceptions.h"

QuilletRootException::QuilletRootException(const QString &message) : m_message(message) {}

QuilletRootException::~QuilletRootException() = default;
