// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/AnnotationFormats_p.h>
#include <Vantor/annotation/ForeignObjects_p.h>
#include <Vantor/annotation/ObjectOutline_p.h>

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <algorithm>

namespace Vantor::Annotations
{

namespace
{
constexpr const char* kKinds = " rectangle ellipse circle polygon ";
constexpr int kDecimals = 10;
constexpr const char* kNoSize = "The size of the image is not known.";

/// The names of the classes; those that were there keep their numbers.
class CClasses
{
public:
    explicit CClasses(const std::string& text)
    {
        QString lines = QString::fromStdString(text);
        lines.remove(QLatin1Char('\r'));
        m_names = lines.split(QLatin1Char('\n'));
        while (!m_names.isEmpty() && m_names.back().isEmpty())
            m_names.removeLast();
        for (int i = m_names.size() - 1; i >= 0; --i) // the first of equal ones counts
            m_numbers.insert(m_names[i], i);
    }

    int NumberOf(const QString& name)
    {
        const auto found = m_numbers.constFind(name);
        if (found != m_numbers.constEnd())
            return *found;
        m_names += name;
        m_numbers.insert(name, m_names.size() - 1);
        return m_names.size() - 1;
    }

    QString NameOf(int nClass) const
    {
        const QString name = m_names.value(nClass);
        return name.isEmpty() ? QStringLiteral("class_%1").arg(nClass) : name;
    }

    std::string Text() const
    {
        return m_names.isEmpty() ? std::string() : m_names.join(QLatin1Char('\n')).toStdString() + '\n';
    }

private:
    QStringList m_names;
    QHash<QString, int> m_numbers;
};

/// One line: the ends of lines become blanks. An empty name has the kind's.
QString ClassName(const SObject& object)
{
    QString name = QString::fromStdString(object.name);
    name.replace(QLatin1Char('\n'), QLatin1Char(' ')).replace(QLatin1Char('\r'), QLatin1Char(' '));
    return name.isEmpty() ? QString::fromStdString(object.kind) : name;
}

/// Cuts the part of a polygon off that lies beyond an upright or level line.
/// @param nAxis  0: the line is upright, 1: level
/// @param dSide  1: what is greater stays, -1: what is less
std::vector<double> CutOff(const std::vector<double>& points, std::size_t nAxis, double dPlace, double dSide)
{
    std::vector<double> kept;
    const auto inside = [&](std::size_t i) { return (points[i + nAxis] - dPlace) * dSide >= 0.0; };
    for (std::size_t i = 0; i < points.size(); i += 2) {
        const std::size_t nLast = i == 0 ? points.size() - 2 : i - 2;
        if (inside(i) != inside(nLast)) {
            const double dPart =
                (dPlace - points[nLast + nAxis]) / (points[i + nAxis] - points[nLast + nAxis]);
            double crossing[2];
            crossing[nAxis] = dPlace;
            crossing[1 - nAxis] =
                points[nLast + 1 - nAxis] + dPart * (points[i + 1 - nAxis] - points[nLast + 1 - nAxis]);
            kept.insert(kept.end(), {crossing[0], crossing[1]});
        }
        if (inside(i))
            kept.insert(kept.end(), {points[i], points[i + 1]});
    }
    return kept;
}

std::vector<double> Clipped(std::vector<double> points, const SBounds& image)
{
    points = CutOff(points, 0, image.left, 1.0);
    points = CutOff(points, 0, image.right, -1.0);
    points = CutOff(points, 1, image.top, 1.0);
    return CutOff(points, 1, image.bottom, -1.0);
}

QByteArray Fraction(double dNumber)
{
    return ' ' + QByteArray::number(std::clamp(dNumber, 0.0, 1.0), 'f', kDecimals);
}

/// The annotation of a row's fields; of no kind when they are none.
SObject ObjectOf(const QStringList& fields, const CClasses& classes, double dWidth, double dHeight)
{
    SObject object;
    bool bClass = false;
    const int nClass = fields.value(0).toInt(&bClass);
    const std::vector<double> f = ReadNumbers(QStringList(fields.mid(1)).join(QLatin1Char(' ')));
    if (!bClass || nClass < 0 || f.size() + 1 != static_cast<std::size_t>(fields.size()))
        return object;
    object.name = classes.NameOf(nClass).toStdString();
    if (f.size() == 4 || f.size() == 5) { // the fifth is how certain a detector was
        object.kind = "rectangle";
        object.numbers = NumbersOf(SBounds{(f[0] - f[2] / 2.0) * dWidth, (f[1] - f[3] / 2.0) * dHeight,
                                           (f[0] + f[2] / 2.0) * dWidth, (f[1] + f[3] / 2.0) * dHeight});
        object = Normalised(object);
    } else if (f.size() >= 6 && f.size() % 2 == 0) {
        object.kind = "polygon";
        for (std::size_t i = 0; i < f.size(); ++i)
            object.numbers.push_back(f[i] * (i % 2 ? dHeight : dWidth));
    }
    return object;
}

class CYoloWriting
{
public:
    /// @param bOutlines  rows are outlines, otherwise boxes: a file must not hold both
    CYoloWriting(const SBounds& image, bool bOutlines, const std::string& classes, Remarks& remarks)
        : m_image(image), m_bOutlines(bOutlines), m_classes(classes), m_remarks(remarks)
    {
    }

    void Write(const SObject& object)
    {
        const std::vector<double> outline = OutlineOf(object);
        const std::vector<double> clipped = Clipped(outline, m_image);
        const SBounds box = BoundsOfPoints(clipped);
        if (clipped.size() < 6 || box.Width() <= 0.0 || box.Height() <= 0.0) {
            m_remarks.push_back({object.name, "It is left out: it covers nothing of the image."});
            return;
        }
        const QString name = ClassName(object);
        QByteArray row = QByteArray::number(m_classes.NumberOf(name));
        for (const double dFraction : m_bOutlines ? OutlineFractions(clipped) : BoxFractions(box))
            row += Fraction(dFraction);
        Tell(object, row, clipped != outline);
        m_bytes += row + '\n';
    }

    std::string Bytes() const { return m_bytes.toStdString(); }
    std::string Classes() const { return m_classes.Text(); }

private:
    std::vector<double> BoxFractions(const SBounds& box) const
    {
        return {(box.left + box.right) / 2.0 / m_image.right, (box.top + box.bottom) / 2.0 / m_image.bottom,
                box.Width() / m_image.right, box.Height() / m_image.bottom};
    }

    std::vector<double> OutlineFractions(std::vector<double> points) const
    {
        for (std::size_t i = 0; i < points.size(); ++i)
            points[i] /= i % 2 ? m_image.bottom : m_image.right;
        return points;
    }

    void Tell(const SObject& object, const QByteArray& row, bool bClipped)
    {
        const SObject read = ObjectOf(QString::fromLatin1(row).split(QLatin1Char(' ')), m_classes,
                                      m_image.right, m_image.bottom);
        TellKind(object, read.kind, m_remarks);
        if (bClipped)
            m_remarks.push_back({object.name, "It is clipped to the image."});
        else
            TellRounding(object, read, m_remarks);
        if (read.name != object.name)
            m_remarks.push_back({object.name, "Its name becomes \"" + read.name + "\"."});
        TellLosses(object, Keeps_Nothing, m_remarks);
    }

    SBounds m_image;
    bool m_bOutlines;
    CClasses m_classes;
    Remarks& m_remarks;
    QByteArray m_bytes;
};
} // namespace

bool IsYolo(const std::string& bytes, const std::string& fileName)
{
    if (!QString::fromStdString(fileName).endsWith(QStringLiteral(".txt"), Qt::CaseInsensitive))
        return false;
    const QString line = QString::fromStdString(bytes.substr(0, bytes.find('\n'))).simplified();
    return bytes.empty() ||
           !ObjectOf(line.split(QLatin1Char(' ')), CClasses(std::string()), 1, 1).kind.empty();
}

CResult ReadYolo(const std::string& bytes, const SContext& context, SDocument& document, Remarks& remarks)
{
    if (context.width <= 0 || context.height <= 0)
        return CResult::Failure(kNoSize);
    const CClasses classes(context.classes);
    CForeignReading reading(document, remarks);
    reading.GoToPage(0, context);
    std::size_t nEnd = 0;
    for (std::size_t nAt = 0, nLine = 1; nAt < bytes.size() && !reading.IsFull(); nAt = nEnd + 1, ++nLine) {
        nEnd = std::min(bytes.find('\n', nAt), bytes.size());
        const QString line =
            QString::fromLatin1(bytes.data() + nAt, static_cast<int>(nEnd - nAt)).simplified();
        if (line.isEmpty())
            continue;
        SObject object = ObjectOf(line.split(QLatin1Char(' ')), classes, context.width, context.height);
        if (object.kind.empty())
            reading.Skip("line " + std::to_string(nLine), "It is left out: it is no row of YOLO.");
        else
            reading.Take(std::move(object));
    }
    return reading.Finish();
}

CResult WriteYolo(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks)
{
    const SPage& page = PageToWrite(document, context);
    const SBounds image{0.0, 0.0, double(WidthOf(page, context)), double(HeightOf(page, context))};
    if (image.right <= 0.0 || image.bottom <= 0.0)
        return CResult::Failure(kNoSize);
    const bool bOutlines = std::any_of(page.objects.begin(), page.objects.end(), [](const SObject& object) {
        return IsRegion(object) && object.kind != "rectangle";
    });
    CYoloWriting writing(image, bOutlines, context.classes, remarks);
    for (auto object = page.objects.rbegin(); object != page.objects.rend(); ++object) {
        if (CanBeWritten(*object, kKinds, remarks))
            writing.Write(*object);
    }
    TellPageLosses(document, page, remarks);
    TellOtherPages(document, page, remarks);
    bytes = writing.Bytes();
    context.classes = writing.Classes();
    return CResult::Success();
}

} // namespace Vantor::Annotations
