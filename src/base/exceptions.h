// Exceptions raised by the data objects; all in the global namespace.
#ifndef HALVANE_BASE_EXCEPTIONS_H
#define HALVANE_BASE_EXCEPTIONS_H

#include <halvane/export.h>

#include <QtCore/QString>

/*! The root of the library's exceptions. It derives from nothing, on purpose:
    a handler for std::exception does not see the library's errors, which are
    caught as QuilletRootException (or one of its kinds) and read by GetMessage. */
class HALVANE_EXPORT QuilletRootException
{
public:
    explicit QuilletRootException(const QString &message);
    virtual ~QuilletRootException();
    QString GetMessage() const { return m_message; }

private:
    QString m_message;
};

class HALVANE_EXPORT QuilletException : public QuilletRootException
{
public:
    using QuilletRootException::QuilletRootException;
};

/*! A value outside what a field accepts (setters and Check). */
class HALVANE_EXPORT OutOfRangeException : public QuilletException
{
public:
    using QuilletException::QuilletException;
};

/*! A list item or nested object without the data it needs. */
class HALVANE_EXPORT IncompleteDefinitionException : public QuilletException
{
public:
    using QuilletException::QuilletException;
};

/*! XML that is not well formed, of another class, or not a valid value. */
class HALVANE_EXPORT InvalidXmlException : public QuilletException
{
public:
    using QuilletException::QuilletException;
};

/*! Binary data whose lengths, header or contents do not add up. */
class HALVANE_EXPORT BinaryParsingException : public QuilletException
{
public:
    using QuilletException::QuilletException;
};

#endif
