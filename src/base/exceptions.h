// Exceptions raised by the data objects; all in the global namespace.
#ifndef HALVANE_BASE_EXCEPTIONS_H
#define HALVANE_BASE_EXCEPTIONS_H

#include <halvane/export.h>

#include <QtCore/QString>

/*! The root of the library's exceptions. It derives from nothing, on purpose:
    a handler for std::exception does not see the library's errors, which are
    caught as QuilletRootException (or one of its kinds) and read by GetMessage.
    \ingroup base */
class HALVANE_EXPORT QuilletRootException
{
public:
    /// An exception that says \a message.
    explicit QuilletRootException(const QString &message);
    /// Frees the message.
    virtual ~QuilletRootException();
    /// The message, most often with the object name in front.
    QString GetMessage() const { return m_message; }

private:
    QString m_message;
};

/*! The kind of every exception the library raises; raised itself when a file
    cannot be read or written.
    \ingroup base */
class HALVANE_EXPORT QuilletException : public QuilletRootException
{
public:
    /// An exception that says \a message.
    using QuilletRootException::QuilletRootException;
};

/*! A value outside what a field accepts (setters and Check).
    \ingroup base */
class HALVANE_EXPORT OutOfRangeException : public QuilletException
{
public:
    /// An exception that says \a message.
    using QuilletException::QuilletException;
};

/*! A list item or nested object without the data it needs.
    \ingroup base */
class HALVANE_EXPORT IncompleteDefinitionException : public QuilletException
{
public:
    /// An exception that says \a message.
    using QuilletException::QuilletException;
};

/*! XML that is not well formed, of another class, or not a valid value.
    \ingroup base */
class HALVANE_EXPORT InvalidXmlException : public QuilletException
{
public:
    /// An exception that says \a message.
    using QuilletException::QuilletException;
};

/*! Binary data whose lengths, header or contents do not add up.
    \ingroup base */
class HALVANE_EXPORT BinaryParsingException : public QuilletException
{
public:
    /// An exception that says \a message.
    using QuilletException::QuilletException;
};

#endif
