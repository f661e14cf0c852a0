// halvane plot: attenuation and width against frequency, one series per
// antenna pattern, from an AntennaPatterns or AntennaMatrixConfiguration
// document; for one antenna entry its pattern with the definition's band and
// limits marked. Written as SVG or PNG by Qt's painter, or as the CSV of the
// points drawn, so that numbers can be checked rather than pixels. Only this
// tool links Qt's GUI modules; the library has no GUI dependency.
#include "plot.h"

#include <halvane/halvane.h>

#include <QtCore/QBuffer>
#include <QtCore/QFileInfo>
#include <QtCore/QStringList>
#include <QtCore/QVector>
#include <QtGui/QFontMetrics>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtSvg/QSvgGenerator>

#include <algorithm>
#include <cmath>
#include <cstdio>

using namespace HALVANE;

namespace plot {

namespace {

struct Point {
    double frequency;
    double attenuation;
    double width;
};

struct Series {
    QString name;
    QVector<Point> points; // by frequency; equal frequencies in document order
};

/*! A frequency marked on the plot of one antenna: an end of its band or a limit. */
struct Marker {
    QString kind; // "band" or "limit"
    QString name; // the field of AntennaDefinition
    double frequency;
};

struct Figure {
    QString title;
    QVector<Series> series;
    QVector<Marker> markers;
    QStringList warnings;
};

// ---- The points of a document

Series seriesOf(const AntennaPattern &pattern, const QString &name, QStringList &warnings)
{
    Series s;
    s.name = name;
    const QVector<Curve> &curves = pattern.GetCurve();
    for (int i = 0; i < curves.size(); ++i) {
        const Curve &c = curves[i];
        const Point p{c.Getfrequency(), c.Getattenuation(), c.Getwidth()};
        if (!std::isfinite(p.frequency) || !std::isfinite(p.attenuation) || !std::isfinite(p.width)) {
            warnings.append(QStringLiteral("pattern '%1', point %2: a value is not a finite number; skipped").arg(name).arg(i + 1));
            continue;
        }
        s.points.append(p);
    }
    std::stable_sort(s.points.begin(), s.points.end(),
                     [](const Point &a, const Point &b) { return a.frequency < b.frequency; });
    int repeated = 0;
    for (int i = 1; i < s.points.size(); ++i)
        repeated += s.points[i].frequency == s.points[i - 1].frequency ? 1 : 0;
    if (repeated)
        warnings.append(QStringLiteral("pattern '%1': %2 point(s) at a frequency already taken; drawn in document order")
                            .arg(name)
                            .arg(repeated));
    if (s.points.isEmpty())
        warnings.append(QStringLiteral("pattern '%1' has no point to draw").arg(name));
    return s;
}

QString nameOf(AntennaPattern pattern)
{
    return pattern.Getname();
}

void addMarker(Figure &fig, const QString &kind, const QString &name, bool set, double frequency)
{
    if (!set)
        return;
    if (!std::isfinite(frequency)) {
        fig.warnings.append(QStringLiteral("%1 is not a finite number; not marked").arg(name));
        return;
    }
    fig.markers.append(Marker{kind, name, frequency});
}

Figure entryFigure(const AntennaMatrixConfiguration &station, int index)
{
    for (const AntennaEntry &entry : station.GetAntennaEntries().GetAntennaEntry()) {
        if (entry.Getindex() != index)
            continue;
        Figure fig;
        AntennaDefinition d = entry.GetAntennaDefinition();
        fig.title = QStringLiteral("Antenna %1").arg(index);
        if (!d.GetName().isEmpty())
            fig.title += QStringLiteral(": ") + d.GetName();
        if (d.IsAntennaPatternSet())
            fig.series.append(seriesOf(d.GetAntennaPattern(), nameOf(d.GetAntennaPattern()), fig.warnings));
        else
            fig.warnings.append(QStringLiteral("antenna %1 has no pattern; its band and limits are drawn alone").arg(index));
        addMarker(fig, QStringLiteral("band"), QStringLiteral("FrequencyStart"), d.IsFrequencyStartSet(), d.GetFrequencyStart());
        addMarker(fig, QStringLiteral("band"), QStringLiteral("FrequencyStop"), d.IsFrequencyStopSet(), d.GetFrequencyStop());
        addMarker(fig, QStringLiteral("limit"), QStringLiteral("UpperLimit_HF"), d.IsUpperLimit_HFSet(), d.GetUpperLimit_HF());
        addMarker(fig, QStringLiteral("limit"), QStringLiteral("UpperLimit_VUHF"), d.IsUpperLimit_VUHFSet(),
                  d.GetUpperLimit_VUHF());
        return fig;
    }
    throw Failure{QStringLiteral("no antenna entry has the index %1").arg(index), 1};
}

Figure figureOf(const QUILLET::IQuilletObject &object, bool oneEntry, int index)
{
    if (const auto *all = dynamic_cast<const AntennaPatterns *>(&object)) {
        if (oneEntry)
            throw Failure{QStringLiteral("--entry chooses an antenna of an AntennaMatrixConfiguration"), 2};
        Figure fig;
        fig.title = QStringLiteral("Antenna patterns");
        for (const AntennaPattern &p : all->GetAntennaPattern())
            fig.series.append(seriesOf(p, nameOf(p), fig.warnings));
        return fig;
    }
    if (const auto *station = dynamic_cast<const AntennaMatrixConfiguration *>(&object)) {
        if (oneEntry)
            return entryFigure(*station, index);
        Figure fig;
        fig.title = QStringLiteral("Antenna patterns of the matrix");
        for (const AntennaEntry &entry : station->GetAntennaEntries().GetAntennaEntry()) {
            const AntennaDefinition &d = entry.GetAntennaDefinition();
            if (!entry.IsAntennaDefinitionSet() || !d.IsAntennaPatternSet())
                continue;
            const QString name = QStringLiteral("%1: %2").arg(entry.Getindex()).arg(nameOf(d.GetAntennaPattern()));
            fig.series.append(seriesOf(d.GetAntennaPattern(), name, fig.warnings));
        }
        return fig;
    }
    throw Failure{QStringLiteral("plot draws AntennaPatterns and AntennaMatrixConfiguration documents, not %1")
                      .arg(object.GetObjectName()),
                  1};
}

// ---- CSV

QString number(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString csvField(const QString &text)
{
    if (!text.contains(QLatin1Char(',')) && !text.contains(QLatin1Char('"')) && !text.contains(QLatin1Char('\n'))
        && !text.contains(QLatin1Char('\r')))
        return text;
    QString quoted = text;
    quoted.replace(QLatin1String("\""), QLatin1String("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

QByteArray csv(const Figure &fig)
{
    QString out = QStringLiteral("kind,series,frequency,attenuation,width\n");
    for (const Series &s : fig.series) {
        for (const Point &p : s.points)
            out += QStringLiteral("point,%1,%2,%3,%4\n")
                       .arg(csvField(s.name), number(p.frequency), number(p.attenuation), number(p.width));
    }
    for (const Marker &m : fig.markers)
        out += QStringLiteral("%1,%2,%3,,\n").arg(m.kind, m.name, number(m.frequency));
    return out.toUtf8();
}

// ---- Drawing

/*! One axis: its range, and whether it is logarithmic (frequencies over two
    decades or more, all above 0). */
struct Axis {
    double lo = 0;
    double hi = 1;
    double step = 0.2;
    bool log = false;

    /*! The position of \a value between \a from (at lo) and \a to (at hi).
        Halves keep differences of the largest doubles finite. */
    double map(double value, double from, double to) const
    {
        const double t = log ? (std::log10(value) - std::log10(lo)) / (std::log10(hi) - std::log10(lo))
                             : (value / 2 - lo / 2) / (hi / 2 - lo / 2);
        return from + t * (to - from);
    }
    QVector<double> ticks() const
    {
        QVector<double> t;
        if (log) {
            for (double e = std::round(std::log10(lo)); e <= std::log10(hi) + 1e-9; e += 1)
                t.append(std::pow(10.0, e));
        } else {
            const int n = int(std::min(1000.0, std::round(hi / step - lo / step)));
            for (int i = 0; i <= n; ++i)
                t.append(lo + i * step);
        }
        return t;
    }
};

double niceStep(double raw)
{
    const double magnitude = std::pow(10.0, std::floor(std::log10(raw)));
    const double f = raw / magnitude;
    return (f <= 1 ? 1 : f <= 2 ? 2 : f <= 5 ? 5 : 10) * magnitude;
}

Axis axisOf(const QVector<double> &values, bool mayBeLog)
{
    Axis a;
    if (values.isEmpty())
        return a;
    const double lo = *std::min_element(values.begin(), values.end());
    const double hi = *std::max_element(values.begin(), values.end());
    if (mayBeLog && lo > 0 && hi / lo >= 100) {
        // Whole decades, where they are numbers (not at the ends of the doubles).
        const double decadeLo = std::pow(10.0, std::floor(std::log10(lo)));
        const double decadeHi = std::pow(10.0, std::ceil(std::log10(hi)));
        if (decadeLo > 0 && std::isfinite(decadeHi)) {
            a.log = true;
            a.lo = decadeLo;
            a.hi = decadeHi;
            return a;
        }
    }
    a.lo = lo;
    a.hi = hi;
    if (a.lo == a.hi) { // a single value: room around it
        const double pad = std::abs(a.lo) * 0.1 >= 1e-300 ? std::abs(a.lo) * 0.1 : 1.0;
        a.lo -= pad;
        a.hi += pad;
    }
    a.step = niceStep(a.hi / 6 - a.lo / 6);
    a.lo = std::floor(a.lo / a.step) * a.step;
    a.hi = std::ceil(a.hi / a.step) * a.step;
    return a;
}

QString tickText(double value)
{
    return QString::number(std::abs(value) < 1e-12 ? 0.0 : value, 'g', 6);
}

const QColor kPalette[] = {QColor(0x1f, 0x77, 0xb4), QColor(0xd6, 0x27, 0x28), QColor(0x2c, 0xa0, 0x2c),
                           QColor(0xff, 0x7f, 0x0e), QColor(0x94, 0x67, 0xbd), QColor(0x8c, 0x56, 0x4b),
                           QColor(0xe3, 0x77, 0xc2), QColor(0x7f, 0x7f, 0x7f), QColor(0xbc, 0xbd, 0x22),
                           QColor(0x17, 0xbe, 0xcf)};

QColor colorOf(int series)
{
    return kPalette[series % int(sizeof(kPalette) / sizeof(kPalette[0]))];
}

const QSize kSize(960, 720);
constexpr int kLeft = 80, kRight = 250, kTop = 50, kBottom = 60, kGap = 50;

// One panel: a quantity of every series against frequency.
void drawPanel(QPainter &p, const Figure &fig, const QRectF &area, const Axis &x, double Point::*quantity,
               const QString &label)
{
    QVector<double> values;
    for (const Series &s : fig.series)
        for (const Point &pt : s.points)
            values.append(pt.*quantity);
    const Axis y = axisOf(values, false);
    auto px = [&](double f) { return x.map(f, area.left(), area.right()); };
    auto py = [&](double v) { return y.map(v, area.bottom(), area.top()); };

    // Band and limits first, under the curves.
    double bandStart = NAN, bandStop = NAN;
    for (const Marker &m : fig.markers) {
        if (m.name == QLatin1String("FrequencyStart"))
            bandStart = m.frequency;
        else if (m.name == QLatin1String("FrequencyStop"))
            bandStop = m.frequency;
    }
    p.save();
    p.setClipRect(area);
    if (std::isfinite(bandStart) && std::isfinite(bandStop) && (!x.log || (bandStart > 0 && bandStop > 0)))
        p.fillRect(QRectF(QPointF(px(std::min(bandStart, bandStop)), area.top()),
                          QPointF(px(std::max(bandStart, bandStop)), area.bottom())),
                   QColor(0x1f, 0x77, 0xb4, 0x22));
    for (const Marker &m : fig.markers) {
        if (x.log && m.frequency <= 0)
            continue;
        p.setPen(QPen(m.kind == QLatin1String("band") ? QColor(0x1f, 0x77, 0xb4) : QColor(0xd6, 0x27, 0x28), 1,
                      m.kind == QLatin1String("band") ? Qt::SolidLine : Qt::DashLine));
        p.drawLine(QPointF(px(m.frequency), area.top()), QPointF(px(m.frequency), area.bottom()));
    }
    p.restore();

    // Grid, ticks and labels.
    p.setPen(QPen(QColor(0xdd, 0xdd, 0xdd), 1));
    for (double t : x.ticks())
        p.drawLine(QPointF(px(t), area.top()), QPointF(px(t), area.bottom()));
    for (double t : y.ticks())
        p.drawLine(QPointF(area.left(), py(t)), QPointF(area.right(), py(t)));
    p.setPen(QPen(Qt::black, 1));
    p.drawRect(area);
    const QFontMetricsF metrics(p.font());
    for (double t : x.ticks()) {
        const QString text = tickText(t);
        p.drawText(QPointF(px(t) - metrics.horizontalAdvance(text) / 2, area.bottom() + 15), text);
    }
    for (double t : y.ticks()) {
        const QString text = tickText(t);
        p.drawText(QPointF(area.left() - 6 - metrics.horizontalAdvance(text), py(t) + 4), text);
    }
    p.save();
    p.translate(area.left() - 55, area.center().y());
    p.rotate(-90);
    p.drawText(QPointF(-metrics.horizontalAdvance(label) / 2, 0), label);
    p.restore();

    // The series: a line through two points or more, a dot on each.
    p.save();
    p.setClipRect(area.adjusted(-4, -4, 4, 4));
    for (int i = 0; i < fig.series.size(); ++i) {
        const Series &s = fig.series[i];
        QPainterPath path;
        for (int j = 0; j < s.points.size(); ++j) {
            if (x.log && s.points[j].frequency <= 0)
                continue;
            const QPointF at(px(s.points[j].frequency), py(s.points[j].*quantity));
            if (path.elementCount() == 0)
                path.moveTo(at);
            else
                path.lineTo(at);
        }
        p.setPen(QPen(colorOf(i), 1.5));
        p.setBrush(Qt::NoBrush);
        p.drawPath(path);
        p.setBrush(colorOf(i));
        for (int j = 0; j < path.elementCount(); ++j)
            p.drawEllipse(QPointF(path.elementAt(j).x, path.elementAt(j).y), 2.5, 2.5);
    }
    p.restore();
}

void paint(QPainter &p, const Figure &fig)
{
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(QRect(QPoint(0, 0), kSize), Qt::white);
    QFont font = p.font();
    font.setPixelSize(12);
    p.setFont(font);

    QVector<double> frequencies;
    for (const Series &s : fig.series)
        for (const Point &pt : s.points)
            frequencies.append(pt.frequency);
    for (const Marker &m : fig.markers)
        frequencies.append(m.frequency);
    const Axis x = axisOf(frequencies, true);

    const double width = kSize.width() - kLeft - kRight;
    const double height = (kSize.height() - kTop - kBottom - kGap) / 2.0;
    const QRectF top(kLeft, kTop, width, height);
    const QRectF bottom(kLeft, kTop + height + kGap, width, height);
    drawPanel(p, fig, top, x, &Point::attenuation, QStringLiteral("attenuation (units as stored)"));
    drawPanel(p, fig, bottom, x, &Point::width, QStringLiteral("width (units as stored)"));

    const QFontMetricsF metrics(p.font());
    p.setPen(Qt::black);
    const QString xLabel = QStringLiteral("frequency (units as stored%1)").arg(x.log ? QStringLiteral(", logarithmic") : QString());
    p.drawText(QPointF(kLeft + (width - metrics.horizontalAdvance(xLabel)) / 2, kSize.height() - 15), xLabel);
    QFont bold = font;
    bold.setBold(true);
    bold.setPixelSize(15);
    p.setFont(bold);
    p.drawText(QPointF(kLeft, kTop - 20), fig.title);
    p.setFont(font);

    // Legend: one line per series, then the marks with their frequencies.
    const double legendX = kLeft + width + 20;
    double y = kTop + 10;
    auto legendText = [&](const QString &text) {
        p.setPen(Qt::black);
        p.drawText(QPointF(legendX + 26, y + 4), metrics.elidedText(text, Qt::ElideRight, kRight - 50));
        y += 20;
    };
    for (int i = 0; i < fig.series.size(); ++i) {
        p.setPen(QPen(colorOf(i), 2));
        p.drawLine(QPointF(legendX, y), QPointF(legendX + 20, y));
        legendText(fig.series[i].name + (fig.series[i].points.isEmpty() ? QStringLiteral(" (no points)") : QString()));
    }
    for (const Marker &m : fig.markers) {
        const bool band = m.kind == QLatin1String("band");
        p.setPen(QPen(band ? QColor(0x1f, 0x77, 0xb4) : QColor(0xd6, 0x27, 0x28), 1, band ? Qt::SolidLine : Qt::DashLine));
        p.drawLine(QPointF(legendX + 10, y - 7), QPointF(legendX + 10, y + 7));
        legendText(QStringLiteral("%1 %2").arg(m.name, tickText(m.frequency)));
    }
}

QByteArray svg(const Figure &fig)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(kSize);
    generator.setViewBox(QRect(QPoint(0, 0), kSize));
    // The generator writes these as they are: escaped here, for the file to stay well-formed.
    generator.setTitle(fig.title.toHtmlEscaped());
    generator.setDescription(QStringLiteral("attenuation and width against frequency, drawn by halvane plot"));
    QPainter painter(&generator);
    paint(painter, fig);
    painter.end();
    return buffer.data();
}

QByteArray png(const Figure &fig)
{
    QImage image(kSize, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    paint(painter, fig);
    painter.end();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

// ---- The command

// Qt's own notes on a machine without a display (runtime directory, fonts)
// are not the tool's output; real failures are.
void quiet(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", message.toLocal8Bit().constData());
}

struct Options {
    QString file;
    QString out = QStringLiteral("-");
    QString to;
    QString from;
    bool oneEntry = false;
    int entry = 0;
};

Options parse(const QStringList &args)
{
    Options o;
    QStringList positional;
    for (int i = 0; i < args.size(); ++i) {
        const QString &a = args[i];
        if (a == QLatin1String("--entry") || a == QLatin1String("--to") || a == QLatin1String("--from")) {
            if (i + 1 >= args.size())
                throw Failure{QStringLiteral("%1 needs a value").arg(a), 2};
            const QString value = args[++i];
            if (a == QLatin1String("--entry")) {
                bool ok = false;
                o.entry = value.toInt(&ok);
                if (!ok)
                    throw Failure{QStringLiteral("--entry takes the index of an antenna entry, not '%1'").arg(value), 2};
                o.oneEntry = true;
            } else {
                (a == QLatin1String("--to") ? o.to : o.from) = value.toLower();
            }
        } else if (a == QLatin1String("--csv")) {
            o.to = QStringLiteral("csv");
        } else if (a.startsWith(QLatin1Char('-')) && a != QLatin1String("-")) {
            throw Failure{QStringLiteral("unknown option '%1'").arg(a), 2};
        } else {
            positional.append(a);
        }
    }
    if (positional.isEmpty() || positional.size() > 2)
        throw Failure{QStringLiteral("plot takes FILE and an optional OUT"), 2};
    o.file = positional[0];
    o.out = positional.value(1, QStringLiteral("-"));
    if (o.to.isEmpty())
        o.to = o.out == QLatin1String("-") ? QStringLiteral("svg") : QFileInfo(o.out).suffix().toLower();
    if (o.to != QLatin1String("svg") && o.to != QLatin1String("png") && o.to != QLatin1String("csv"))
        throw Failure{QStringLiteral("%1: unknown plot format '%2' (svg, png or csv)").arg(o.out, o.to), 2};
    return o;
}

} // namespace

int run(int argc, char **argv, const ToolIo &io)
{
    // The pictures are drawn off screen; no display is needed.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(quiet);
    QGuiApplication app(argc, argv);
    try {
        const Options o = parse(app.arguments().mid(2));
        const std::unique_ptr<QUILLET::IQuilletObject> object = io.load(o.file, o.from);
        Figure fig;
        try {
            fig = figureOf(*object, o.oneEntry, o.entry);
        } catch (const Failure &f) {
            throw Failure{f.code == 1 ? o.file + QStringLiteral(": ") + f.message : f.message, f.code};
        }
        if (fig.series.isEmpty() && fig.markers.isEmpty())
            throw Failure{o.file + QStringLiteral(": no pattern to plot"), 1};
        for (const QString &warning : fig.warnings)
            std::fprintf(stderr, "%s\n", (o.file + QStringLiteral(": warning: ") + warning).toLocal8Bit().constData());
        io.write(o.out, o.to == QLatin1String("csv") ? csv(fig) : o.to == QLatin1String("png") ? png(fig) : svg(fig));
        return 0;
    } catch (const Failure &f) {
        const QString line =
            f.code == 2 ? QStringLiteral("halvane: %1 (halvane --help shows the usage)").arg(f.message) : f.message;
        std::fprintf(stderr, "%s\n", line.toLocal8Bit().constData());
        return f.code;
    }
}

} // namespace plot
