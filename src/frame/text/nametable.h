// Name tables of enumerated fields: static rows of text, looked up by index or
// by text. Used by the data classes' converters and by the frame's XML and
// tagged readers.
#ifndef HALVANE_FRAME_NAMETABLE_H
#define HALVANE_FRAME_NAMETABLE_H

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QStringView>
#include <QtCore/QVector>

#include <type_traits>

namespace HALVANE {
namespace frame {

/*! Finds the first of a fixed set of strings equal to a text, by hash.
    Built once; lookups allocate nothing. */
class StringIndex
{
public:
    void build(const QVector<QString> &keys);
    /*! Index of the first key equal to \a text (case matters), or -1. */
    int find(QStringView text) const;
    int find(const char *utf8, int size) const;

private:
    QVector<QString> m_keys;
    QVector<qint16> m_slots; // open addressing; -1 is empty
    uint m_mask = 0;
};

/*! One name table: rows of text columns and, where the table has one, a
    Helpid column. Row order is the value of the enumerated field, a signed
    8-bit index, so a table has at most kMaxRows rows; the constructors
    refuse a longer one at compile time. */
class NameTable
{
public:
    static constexpr int kMaxRows = 128;

    /*! A one-column table: the Name of each row. */
    template <int R>
    explicit NameTable(const char *const (&names)[R])
    {
        static_assert(R <= kMaxRows, "a name table has at most 128 rows: its index is a signed byte");
        init(&names[0], R, 1, nullptr, nullptr);
    }
    /*! A table of several text columns, named by \a columns, Name first. */
    template <int R, int C>
    NameTable(const char *const (&rows)[R][C], const char *const (&columns)[C])
    {
        static_assert(R <= kMaxRows, "a name table has at most 128 rows: its index is a signed byte");
        init(&rows[0][0], R, C, columns, nullptr);
    }
    /*! As above, with a Helpid column after the text columns. */
    template <int R, int C>
    NameTable(const char *const (&rows)[R][C], const char *const (&columns)[C], const int (&helpids)[R])
    {
        static_assert(R <= kMaxRows, "a name table has at most 128 rows: its index is a signed byte");
        init(&rows[0][0], R, C, columns, helpids);
    }

    int columnCount() const { return int(m_columns.size()); }
    const QString &columnName(int column) const { return m_columns[column].name; }
    bool hasHelpids() const { return !m_helpids.isEmpty(); }

    int size() const { return m_size; }
    bool isValid(int value) const { return value >= 0 && value < m_size; }
    /*! Text of \a column in row \a value; a null string outside the table. */
    QString text(int column, int value) const;
    const QString &name(int value) const { return m_columns[0].cells[value]; }
    /*! First row whose \a column equals \a text, or 255 (-1) when there is none. */
    qint8 find(int column, QStringView text) const;
    qint8 findUtf8(const char *utf8, int size) const;
    int helpid(int value) const { return isValid(value) && !m_helpids.isEmpty() ? m_helpids[value] : 0; }
    qint8 findHelpid(int helpid) const;
    const QStringList &names() const { return m_names; }

private:
    void init(const char *const *cells, int rows, int columns, const char *const *columnNames, const int *helpids);
    void addColumn(const QVector<QString> &cells, const QString &name);

    struct Column {
        QString name;
        QVector<QString> cells;
        StringIndex index;
    };
    QVector<Column> m_columns;
    QVector<int> m_helpids;
    QStringList m_names;
    int m_size = 0;
};

/*! The rows of \a table as the row structure of its class, for GetFoos():
    \a members are the structure's members in column order, QString members
    for text columns and an int member for Helpid. */
template <class Row, class... Members>
QList<Row> rowsOf(const NameTable &table, Members... members)
{
    QList<Row> rows;
    rows.reserve(table.size());
    for (int r = 0; r < table.size(); ++r) {
        Row row{};
        int column = 0;
        auto fill = [&](auto member) {
            using Value = std::remove_reference_t<decltype(row.*member)>;
            if constexpr (std::is_same<Value, int>::value)
                row.*member = table.helpid(r);
            else
                row.*member = table.text(column++, r);
        };
        (fill(members), ...);
        rows.append(row);
    }
    return rows;
}

} // namespace frame
} // namespace HALVANE

#endif
