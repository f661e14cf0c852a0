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

#include <initializer_list>

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
    Helpid column. Row order is the value of the enumerated field. */
/*! A text column of a row structure, for NameTable::fromRows. */
template <class Row>
struct RowColumn {
    const char *name;
    QString Row::*member;
};

#define HALVANE_COLUMN(Row, Member) (::HALVANE::frame::RowColumn<Row>{#Member, &Row::Member})

class NameTable
{
public:
    /*! A one-column table. */
    explicit NameTable(const QStringList &names);
    /*! A table of row structures; \a columns are HALVANE_COLUMN(Row, Member)
        in column order, Name first. */
    template <class Row, class... Columns>
    static NameTable fromRows(const QList<Row> &rows, Columns... columns)
    {
        NameTable t;
        for (const auto &column : {columns...}) {
            QVector<QString> cells;
            cells.reserve(rows.size());
            for (const Row &row : rows)
                cells.append(row.*(column.member));
            t.addColumn(cells, QString::fromLatin1(column.name));
        }
        return t;
    }
    /*! The table with the Helpid column of \a rows added. */
    template <class Row>
    NameTable withHelpids(const QList<Row> &rows, int Row::*helpid) const
    {
        NameTable t = *this;
        for (const Row &row : rows)
            t.m_helpids.append(row.*helpid);
        return t;
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
    NameTable() = default;
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

} // namespace frame
} // namespace HALVANE

#endif
