// Declarations shared by every data class: the operations of the class itself
// and the accessor family of each field kind. Each data class header is a
// list of these, one line per field; the definitions forward to the frame.
#ifndef HALVANE_FRAME_DATACLASS_H
#define HALVANE_FRAME_DATACLASS_H

#include "../base/converters.h"
#include "../base/exceptions.h"
#include "../base/quilletobject.h"

#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <memory>

class QDataStream;
class QXmlStreamReader;
class QXmlStreamWriter;

namespace HALVANE {
namespace frame {
struct Payload;
struct ObjectOps;
template <class X> struct OpsImpl;
} // namespace frame
} // namespace HALVANE

/*! The operations every data class X has, and its one data member. */
#define HALVANE_DATA_CLASS(X)                                                   \
public:                                                                         \
    static const qint64 id;                                                     \
    X();                                                                        \
    X(const X &other);                                                          \
    X(X &&other) noexcept;                                                      \
    X &operator=(const X &other);                                               \
    X &operator=(X &&other) noexcept;                                           \
    ~X() override;                                                              \
    bool operator==(const X &other) const;                                      \
    bool operator!=(const X &other) const { return !(*this == other); }         \
    bool HasData() const override;                                              \
    bool AnyData() const;                                                       \
    void Reset() override;                                                      \
    void ResetToDefault();                                                      \
    void Check() const override;                                                \
    void Check(bool recursive) const override;                                  \
    bool IsInitialized() const { return d != nullptr; }                         \
    static qint64 GetId();                                                      \
    static QString GetStaticObjectName();                                       \
    void SetObjectType(QUILLET::ObjectTypes type) override;                     \
    void SetValidate(bool validate) const override;                             \
    void SetLogger(std::shared_ptr<QUILLET::Logger> logger) const override;     \
    void GetXml(QXmlStreamWriter &writer) const override;                       \
    void ProcessXml(QXmlStreamReader &reader) override;                         \
    bool GetBinary(QDataStream &stream, int tag, bool writeTag) const override; \
    void SetBinary(QDataStream &stream, int length) override;                   \
    void GetVersionSpecificBinaryWithoutValidation(QDataStream &stream) const;  \
    void SetVersionSpecificBinaryWithoutValidation(QDataStream &stream);        \
                                                                                \
protected:                                                                      \
    void ProcessXmlStartElement(QXmlStreamReader &reader) override;             \
    const QString &DefaultObjectName() const override;                         \
                                                                                \
private:                                                                        \
    void InitData() const;                                                      \
    void ConstNoClearReset() const;                                             \
    friend const ::HALVANE::frame::ObjectOps &halvaneOps(const X *);            \
    template <class> friend struct ::HALVANE::frame::OpsImpl;                   \
    mutable ::HALVANE::frame::Payload *d = nullptr;                             \
                                                                                \
public:

// Members every field has.
#define HALVANE_FIELD_COMMON_(F) \
    bool Is##F##Set() const;     \
    void Reset##F();

// bool, int, 64-bit int, double and float fields.
#define HALVANE_BOOL_FIELD(F)    \
    HALVANE_FIELD_COMMON_(F)     \
    bool Get##F() const;         \
    void Set##F(bool value);     \
    bool GetDefault##F() const;

#define HALVANE_NUMBER_FIELD_(T, F) \
    HALVANE_FIELD_COMMON_(F)        \
    T Get##F() const;               \
    void Set##F(T value);           \
    T GetDefault##F() const;        \
    bool IsValid##F(const T &value) const;

#define HALVANE_INT_FIELD(F) HALVANE_NUMBER_FIELD_(int, F)
#define HALVANE_INT64_FIELD(F) HALVANE_NUMBER_FIELD_(qint64, F)
#define HALVANE_DOUBLE_FIELD(F) HALVANE_NUMBER_FIELD_(double, F)
#define HALVANE_FLOAT_FIELD(F) HALVANE_NUMBER_FIELD_(float, F)

// String fields; the getter is not const.
#define HALVANE_STRING_FIELD(F)   \
    HALVANE_FIELD_COMMON_(F)      \
    QString Get##F();             \
    void Set##F(QString value);   \
    QString GetDefault##F() const; \
    bool IsValid##F(const QString &value) const;

#define HALVANE_DATETIME_FIELD(F)          \
    HALVANE_FIELD_COMMON_(F)               \
    const QDateTime &Get##F() const;       \
    QDateTime &Get##F();                   \
    void Set##F(const QDateTime &value);   \
    QDateTime GetDefault##F() const;       \
    bool IsValid##F(const QDateTime &value) const;

// Enumerated fields: F is also the name of the value type, a row index.
#define HALVANE_ENUM_FIELD(F)                     \
    typedef qint8 F;                              \
    HALVANE_FIELD_COMMON_(F)                      \
    const F &Get##F() const;                      \
    void Set##F(F value);                         \
    F GetDefault##F() const;                      \
    bool IsValid##F(const F &value) const;        \
    F GetInvalid##F() const;                      \
    QString Get##F##AsString() const;             \
    HALVANE_ENUM_CONVERTERS_(F)

#define HALVANE_ENUM_CONVERTERS_(F)               \
    static QString F##ToName(const F &value);     \
    static F NameTo##F(const QString &name);

// The table of an enumerated field: one column (names and their translations)...
#define HALVANE_ENUM_NAMES(F)       \
    static QStringList Get##F##s(); \
    static QStringList GetGUI##F##s();
// ... or rows of a structure.
#define HALVANE_ENUM_ROWS(F, Row) static QList<Row> Get##F##s();
// A further text column C of the table: F##ToC and CTo##F.
#define HALVANE_ENUM_COLUMN(F, C)               \
    static QString F##To##C(const F &value);    \
    static F C##To##F(const QString &text);
// The Helpid column.
#define HALVANE_ENUM_HELPID(F)                  \
    int F##ToHelpid(const F &value) const;      \
    static F HelpidTo##F(const int &helpid);

#define HALVANE_NESTED_FIELD(T, F)         \
    HALVANE_FIELD_COMMON_(F)               \
    const T &Get##F() const;               \
    T &Get##F();                           \
    void Set##F(const T &value);           \
    bool IsValid##F(const T &value) const;

#define HALVANE_LIST_FIELD_(T, F)                    \
    HALVANE_FIELD_COMMON_(F)                         \
    const QVector<T> &Get##F() const;                \
    QVector<T> &Get##F();                            \
    void Set##F(const QVector<T> &value);            \
    void Append##F(const T &item);                   \
    bool IsValid##F(const T &item) const;            \
    bool IsValid##F(const QVector<T> &items) const;

#define HALVANE_OBJECT_LIST_FIELD(T, F) \
    HALVANE_LIST_FIELD_(T, F)           \
    void Append##F(T &&item);
#define HALVANE_STRING_LIST_FIELD(F) HALVANE_LIST_FIELD_(QString, F)
// A list of enumerated values: F is the item type, with the converters of its table.
#define HALVANE_ENUM_LIST_FIELD(F)       \
    typedef qint8 F;                     \
    HALVANE_LIST_FIELD_(F, F)            \
    F GetDefault##F() const;             \
    F GetInvalid##F() const;             \
    HALVANE_ENUM_CONVERTERS_(F)

/*! After a class, in the global namespace: data objects may be moved in
    memory, so that containers of them grow without copying. */
#define HALVANE_DECLARE_TYPE(X) Q_DECLARE_TYPEINFO(HALVANE::X, Q_MOVABLE_TYPE);

#endif
