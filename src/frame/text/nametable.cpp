// Name tables and the hashed string index behind element and text lookups.
#include "nametable.h"

#include <QtCore/QHash>

namespace HALVANE {
namespace frame {

namespace {

uint hashOf(QStringView text)
{
    return uint(qHash(text, 0));
}

} // namespace

void StringIndex::build(const QVector<QString> &keys)
{
    m_keys = keys;
    uint capacity = 4;
    while (capacity < uint(keys.size()) * 2)
        capacity *= 2;
    m_mask = capacity - 1;
    m_slots.fill(-1, int(capacity));
    for (int i = 0; i < keys.size(); ++i) {
        if (find(keys[i]) >= 0)
            continue; // the first row with a text wins
        uint slot = hashOf(keys[i]) & m_mask;
        while (m_slots[int(slot)] >= 0)
            slot = (slot + 1) & m_mask;
        m_slots[int(slot)] = qint16(i);
    }
}

int StringIndex::find(QStringView text) const
{
    if (m_slots.isEmpty())
        return -1;
    uint slot = hashOf(text) & m_mask;
    for (;;) {
        const int i = m_slots[int(slot)];
        if (i < 0)
            return -1;
        if (m_keys[i] == text)
            return i;
        slot = (slot + 1) & m_mask;
    }
}

int StringIndex::find(const char *utf8, int size) const
{
    // Texts in tables are short; decode onto the stack when they are ASCII.
    QChar buffer[64];
    if (size <= 64) {
        bool ascii = true;
        for (int i = 0; i < size; ++i) {
            const uchar c = uchar(utf8[i]);
            if (c >= 0x80) {
                ascii = false;
                break;
            }
            buffer[i] = QLatin1Char(char(c));
        }
        if (ascii)
            return find(QStringView(buffer, size));
    }
    return find(QString::fromUtf8(utf8, size));
}

void NameTable::init(const char *const *cells, int rows, int columns, const char *const *columnNames,
                     const int *helpids)
{
    for (int c = 0; c < columns; ++c) {
        QVector<QString> texts;
        texts.reserve(rows);
        for (int r = 0; r < rows; ++r)
            texts.append(QString::fromUtf8(cells[r * columns + c]));
        addColumn(texts, columnNames ? QString::fromUtf8(columnNames[c]) : QStringLiteral("Name"));
    }
    if (helpids)
        m_helpids = QVector<int>(helpids, helpids + rows);
}

void NameTable::addColumn(const QVector<QString> &cells, const QString &name)
{
    Column column;
    column.name = name;
    column.cells = cells;
    column.index.build(cells);
    if (m_columns.isEmpty()) {
        m_size = int(cells.size());
        m_names = QStringList(cells.begin(), cells.end());
    }
    m_columns.append(column);
}

QString NameTable::text(int column, int value) const
{
    if (!isValid(value))
        return QString();
    return m_columns[column].cells[value];
}

qint8 NameTable::find(int column, QStringView text) const
{
    return qint8(m_columns[column].index.find(text));
}

qint8 NameTable::findUtf8(const char *utf8, int size) const
{
    return qint8(m_columns[0].index.find(utf8, size));
}

qint8 NameTable::findHelpid(int helpid) const
{
    const int i = int(m_helpids.indexOf(helpid));
    return qint8(i);
}

} // namespace frame
} // namespace HALVANE
