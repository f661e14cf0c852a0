// Exceptions raised by the data objects; all in the global namespace.
#ifndef HALVANE_BASE_EXCEPTIONS_H
#define HALVANE_BASE_EXCEPTIONS_H

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <exception>

class QuilletRootException : public std::exception
{
public:
    explicit QuilletRootException(const QString &message);
    ~QuilletRootException() override;
    QString GetMessage() const { return m_message; }
    const char *what() const noexcept override;

private:
    QString m_message;
    QByteArray m_utf8;
};

class QuilletException : public QuilletRootException
{
public:
    using QuilletRootException::QuilletRootException;
};

/*! A value outside what a field accepts (setters and Check). */
class OutOfRangeException : public QuilletException
{
public:
    using QuilletException::QuilletException;
};

/*! A list item or nested object without the data it needs. */
class IncompleteDefinitionException : public QuilletException
{
public:
    using QuilletException::QuilletException;
};

/*! XML that is not well formed, of another class, or not a valid value. */
class InvalidXmlException : public QuilletException
{
public:
    using QuilletException::QuilletException;
};

/*! Binary data whose lengths, header or contents do not add up. */
class BinaryParsingException : public QuilletException
{
public:
    using QuilletException::QuilletException;
};

#endif
