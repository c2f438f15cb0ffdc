// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/RoiFiles_p.h>

#include <Vantor/annotation/ForeignObjects_p.h>
#include <Vantor/annotation/ObjectOutline_p.h>

#include <QString>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Vantor::Annotations
{

namespace
{
// Places in the file; all numbers are big-endian.
constexpr std::size_t kVersionAt = 4;
constexpr std::size_t kTypeAt = 6;
constexpr std::size_t kTopAt = 8;
constexpr std::size_t kLeftAt = 10;
constexpr std::size_t kBottomAt = 12;
constexpr std::size_t kRightAt = 14;
constexpr std::size_t kCountAt = 16;
constexpr std::size_t kFloatsAt = 18; // of a box or line; the count where it exceeds 16 bits
constexpr std::size_t kPartsAt = 36;
constexpr std::size_t kPenColorAt = 40;
constexpr std::size_t kFillColorAt = 44;
constexpr std::size_t kSubtypeAt = 48;
constexpr std::size_t kOptionsAt = 50;
constexpr std::size_t kArrowHeadAt = 53;
constexpr std::size_t kArcAt = 54;
constexpr std::size_t kPageAt = 56;
constexpr std::size_t kSecondHeaderAt = 60;
constexpr std::size_t kHeader = 64; // either header; the coordinates stand between them
constexpr std::size_t kNameAt = 16; // in the second header
constexpr std::size_t kNameLengthAt = 20;

constexpr int kVersion = 228;
constexpr int kVersionOfExactPoints = 222;
constexpr int kVersionOfExactBoxes = 223;
constexpr int kExact = 128; // an option: there are floats
constexpr int kArrowHead = 10;
constexpr int kSubtypeText = 1;
constexpr int kSubtypeArrow = 2;
constexpr int kSubtypeImage = 4;
constexpr int kFirstUnsigned = -5000; // 16-bit places below are meant without a sign
constexpr int kMaxPlace = 65535 + kFirstUnsigned;
constexpr std::size_t kMaxCount = 65535;
constexpr std::size_t kMaxPoints = 1000000; // each becomes an annotation
constexpr int kMaxPage = 1000000;
constexpr const char* kKinds = " rectangle ellipse circle polygon ruler line arrow point ";

enum EType { Polygon, Box, Oval, Line, FreeLine, Polyline, None, Freehand, Traced, Angle, Points };

template <class T> T Get(const std::string& bytes, std::size_t nAt)
{
    return qFromBigEndian<T>(bytes.data() + nAt);
}

template <class T> void Put(std::string& bytes, std::size_t nAt, T value)
{
    qToBigEndian<T>(value, bytes.data() + nAt);
}

double GetFloat(const std::string& bytes, std::size_t nAt)
{
    const auto nBits = Get<quint32>(bytes, nAt);
    float fValue = 0.0F;
    std::memcpy(&fValue, &nBits, sizeof(fValue));
    return static_cast<double>(fValue);
}

void PutFloat(std::string& bytes, std::size_t nAt, double dValue)
{
    const auto fValue = static_cast<float>(dValue);
    quint32 nBits = 0;
    std::memcpy(&nBits, &fValue, sizeof(nBits));
    Put(bytes, nAt, nBits);
}

int Place(const std::string& bytes, std::size_t nAt)
{
    const int nValue = Get<qint16>(bytes, nAt);
    return nValue < kFirstUnsigned ? Get<quint16>(bytes, nAt) : nValue;
}

/// The box in whole pixels.
SBounds WholeBox(const std::string& bytes)
{
    const int nTop = Place(bytes, kTopAt);
    const int nLeft = Place(bytes, kLeftAt);
    const int nBottom = Get<qint16>(bytes, kBottomAt);
    const int nRight = Get<qint16>(bytes, kRightAt);
    return {double(nLeft), double(nTop), double(nRight < nLeft ? Get<quint16>(bytes, kRightAt) : nRight),
            double(nBottom < nTop ? Get<quint16>(bytes, kBottomAt) : nBottom)};
}

bool IsExact(const std::string& bytes, int nSince)
{
    return (Get<qint16>(bytes, kOptionsAt) & kExact) && Get<qint16>(bytes, kVersionAt) >= nSince;
}

std::vector<double> FloatsOf(const std::string& bytes)
{
    std::vector<double> numbers;
    for (std::size_t i = 0; i < 4; ++i)
        numbers.push_back(GetFloat(bytes, kFloatsAt + 4 * i));
    return numbers;
}

std::vector<double> BoxNumbers(const std::string& bytes)
{
    return IsExact(bytes, kVersionOfExactBoxes) ? FloatsOf(bytes) : NumbersOf(WholeBox(bytes));
}

std::size_t CountOf(const std::string& bytes)
{
    const auto nCount = Get<quint16>(bytes, kCountAt);
    return nCount ? nCount : Get<quint32>(bytes, kFloatsAt);
}

/// x and y of each coordinate; false when the file is too short for them.
bool ReadPoints(const std::string& bytes, std::vector<double>& points)
{
    const std::size_t nCount = CountOf(bytes);
    const bool bExact = IsExact(bytes, kVersionOfExactPoints);
    if (nCount > (bytes.size() - kHeader) / (bExact ? 12 : 4))
        return false;
    const SBounds box = WholeBox(bytes);
    const std::size_t nFloats = kHeader + 4 * nCount;
    for (std::size_t i = 0; i < nCount; ++i) {
        if (bExact) {
            points.push_back(GetFloat(bytes, nFloats + 4 * i));
            points.push_back(GetFloat(bytes, nFloats + 4 * (nCount + i)));
        } else { // ImageJ takes negative ones for zero, too
            points.push_back(box.left + std::max<int>(0, Get<qint16>(bytes, kHeader + 2 * i)));
            points.push_back(box.top + std::max<int>(0, Get<qint16>(bytes, kHeader + 2 * (nCount + i))));
        }
    }
    return true;
}

/// Where the second header stands; 0: there is none.
std::size_t SecondHeader(const std::string& bytes)
{
    const std::size_t nAt = Get<quint32>(bytes, kSecondHeaderAt);
    return nAt >= kHeader && nAt <= bytes.size() - kHeader ? nAt : 0;
}

std::string NameOf(const std::string& bytes)
{
    const std::size_t nHeader = SecondHeader(bytes);
    if (!nHeader)
        return {};
    const std::size_t nAt = Get<quint32>(bytes, nHeader + kNameAt);
    const std::size_t nLength = Get<quint32>(bytes, nHeader + kNameLengthAt);
    if (nAt > bytes.size() || nLength > (bytes.size() - nAt) / 2)
        return {};
    QString name;
    for (std::size_t i = 0; i < nLength; ++i)
        name += QChar(Get<quint16>(bytes, nAt + 2 * i));
    return name.toStdString();
}

SStyle StyleOf(const std::string& bytes)
{
    SStyle style;
    if (const auto nPen = Get<quint32>(bytes, kPenColorAt))
        style.penColor = nPen;
    if (const auto nFill = Get<quint32>(bytes, kFillColorAt))
        style.fillColor = nFill;
    return style;
}

/// Why there is no annotation like it; empty when there is.
std::string WhyNot(const std::string& bytes)
{
    const int nType = static_cast<unsigned char>(bytes[kTypeAt]);
    const int nSubtype = Get<qint16>(bytes, kSubtypeAt);
    if (Get<qint32>(bytes, kPartsAt) > 0)
        return "It is made of several shapes.";
    if (nType == Box && nSubtype == kSubtypeText)
        return "It is a text of ImageJ.";
    if (nType == Box && nSubtype == kSubtypeImage)
        return "It is an image.";
    if (nType == FreeLine || nType == Polyline || nType == Angle)
        return "It is an open line of several corners.";
    if (nType == Points && CountOf(bytes) > kMaxPoints)
        return "It has more than a million points.";
    return nType == None || nType > Points ? "Its type is unknown." : std::string();
}

/// Kinds and numbers; false when the file is too short.
bool ReadShapes(const std::string& bytes, std::vector<SObject>& objects)
{
    const int nType = static_cast<unsigned char>(bytes[kTypeAt]);
    SObject object;
    if (nType == Box || nType == Oval) {
        object.kind = nType == Box ? "rectangle" : "ellipse";
        object.numbers = BoxNumbers(bytes);
        objects.push_back(Normalised(object));
    } else if (nType == Line) {
        object.kind = Get<qint16>(bytes, kSubtypeAt) == kSubtypeArrow ? "arrow" : "line";
        object.numbers = FloatsOf(bytes);
        objects.push_back(object);
    } else {
        std::vector<double> points;
        if (!ReadPoints(bytes, points))
            return false;
        object.kind = nType == Points ? "point" : "polygon";
        const std::size_t nEach = nType == Points ? 2 : points.size();
        for (std::size_t i = 0; i < points.size(); i += nEach) {
            object.numbers.assign(points.begin() + static_cast<std::ptrdiff_t>(i),
                                  points.begin() + static_cast<std::ptrdiff_t>(i + nEach));
            objects.push_back(object);
        }
    }
    return true;
}

void PutHeader(std::string& bytes, EType type, const SBounds& box)
{
    std::memcpy(bytes.data(), "Iout", 4);
    Put<qint16>(bytes, kVersionAt, kVersion);
    bytes[kTypeAt] = static_cast<char>(type);
    const auto place = [](double dPlace) {
        return static_cast<quint16>(static_cast<int>(std::clamp<double>(dPlace, kFirstUnsigned, kMaxPlace)));
    };
    Put(bytes, kTopAt, place(std::floor(box.top)));
    Put(bytes, kLeftAt, place(std::floor(box.left)));
    Put(bytes, kBottomAt, place(std::ceil(box.bottom)));
    Put(bytes, kRightAt, place(std::ceil(box.right)));
}

void PutFloats(std::string& bytes, const std::vector<double>& numbers)
{
    for (std::size_t i = 0; i < 4; ++i)
        PutFloat(bytes, kFloatsAt + 4 * i, numbers[i]);
}

/// The coordinates behind the first header: whole ones relative to the box, then exact ones.
void AppendPoints(std::string& bytes, const std::vector<double>& points, const SBounds& box)
{
    const std::size_t nCount = points.size() / 2;
    Put(bytes, kCountAt, static_cast<quint16>(nCount));
    bytes.resize(kHeader + 12 * nCount);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const bool bY = i % 2 != 0;
        const std::size_t nIndex = i / 2 + (bY ? nCount : 0);
        const double dRelative = std::floor(points[i]) - std::floor(bY ? box.top : box.left);
        Put(bytes, kHeader + 2 * nIndex, static_cast<qint16>(std::min(dRelative, 32767.0)));
        PutFloat(bytes, kHeader + 4 * nCount + 4 * nIndex, points[i]);
    }
}

void AppendSecondHeader(std::string& bytes, const std::string& name)
{
    const std::size_t nHeader = bytes.size();
    const QString text = QString::fromStdString(name);
    Put(bytes, kSecondHeaderAt, static_cast<quint32>(nHeader));
    bytes.resize(nHeader + kHeader + 2 * static_cast<std::size_t>(text.size()));
    if (text.isEmpty())
        return;
    Put(bytes, nHeader + kNameAt, static_cast<quint32>(nHeader + kHeader));
    Put(bytes, nHeader + kNameLengthAt, static_cast<quint32>(text.size()));
    for (int i = 0; i < text.size(); ++i)
        Put<quint16>(bytes, nHeader + kHeader + 2 * static_cast<std::size_t>(i), text[i].unicode());
}

/// What ImageJ has in the place of the annotation: circles are ellipses, rulers are lines.
SObject Counterpart(const SObject& object)
{
    SObject counterpart = Normalised(object);
    if (object.kind == "circle") {
        counterpart.kind = "ellipse";
        counterpart.numbers = NumbersOf(BoundsOf(object));
    } else if (object.kind == "ruler") {
        counterpart.kind = "line";
    }
    return counterpart;
}

EType TypeOf(const SObject& object)
{
    if (IsTwoPoints(object))
        return Line;
    if (object.kind == "rectangle")
        return Box;
    if (object.kind == "ellipse")
        return Oval;
    return object.kind == "point" ? Points : Polygon;
}

std::string BytesOf(const SObject& counterpart, int nPage)
{
    std::string bytes(kHeader, '\0');
    const EType type = TypeOf(counterpart);
    const SBounds box = BoundsOf(counterpart);
    PutHeader(bytes, type, box);
    Put<quint32>(bytes, kPenColorAt, counterpart.style.penColor.value_or(0));
    Put<quint32>(bytes, kFillColorAt, counterpart.style.fillColor.value_or(0));
    Put<qint16>(bytes, kOptionsAt, kExact);
    Put<qint32>(bytes, kPageAt, nPage);
    if (counterpart.kind == "arrow") {
        Put<qint16>(bytes, kSubtypeAt, kSubtypeArrow);
        bytes[kArrowHeadAt] = kArrowHead;
    }
    if (type == Polygon || type == Points)
        AppendPoints(bytes, counterpart.numbers, box);
    else
        PutFloats(bytes, counterpart.numbers);
    AppendSecondHeader(bytes, counterpart.name);
    return bytes;
}
} // namespace

CResult DecodeRegion(const std::string& bytes, SRegion& region)
{
    if (bytes.compare(0, 2, "Io") != 0)
        return CResult::Failure("It is not a region of ImageJ.");
    if (bytes.size() < kHeader)
        return CResult::Failure("The end of the region is missing.");
    const std::string why = WhyNot(bytes);
    if (!why.empty())
        return CResult::Failure(why);
    if (!ReadShapes(bytes, region.objects))
        return CResult::Failure("The end of the region is missing.");
    for (SObject& object : region.objects) {
        object.name = NameOf(bytes);
        object.style = StyleOf(bytes);
    }
    region.page = std::clamp(Get<qint32>(bytes, kPageAt), 0, kMaxPage);
    if (bytes[kTypeAt] == Box && Get<qint16>(bytes, kArcAt) > 0)
        region.remark = "Its corners are not round any more.";
    return CResult::Success();
}

bool IsRegionOfImageJ(const SObject& object, Remarks& remarks)
{
    if (!CanBeWritten(object, kKinds, remarks))
        return false;
    if (object.numbers.size() / 2 <= kMaxCount)
        return true;
    remarks.push_back({object.name, "It is left out: it has more than 65,535 corners."});
    return false;
}

std::string EncodeRegion(const SObject& object, int nPage, Remarks& remarks)
{
    const SObject counterpart = Counterpart(object);
    std::string bytes = BytesOf(counterpart, nPage);
    TellKind(object, counterpart.kind, remarks);
    SRegion region;
    if (DecodeRegion(bytes, region).IsSuccess())
        TellRounding(counterpart, region.objects.front(), remarks);
    // A colour of 0 is none there.
    const unsigned keepsPen = object.style.penColor == 0U ? Keeps_Nothing : Keeps_PenColor;
    const unsigned keepsFill = object.style.fillColor == 0U ? Keeps_Nothing : Keeps_FillColor;
    TellLosses(object, keepsPen | keepsFill, remarks);
    return bytes;
}

bool IsRoi(const std::string& bytes, const std::string&)
{
    return bytes.compare(0, 4, "Iout") == 0;
}

CResult ReadRoi(const std::string& bytes, const SContext& context, SDocument& document, Remarks& remarks)
{
    SRegion region;
    CResult result = DecodeRegion(bytes, region);
    if (!result.IsSuccess())
        return result;
    CForeignReading reading(document, remarks);
    reading.GoToPage(std::max(region.page - 1, 0), context);
    if (!region.remark.empty())
        remarks.push_back({region.objects.front().name, region.remark});
    for (SObject& object : region.objects)
        reading.Take(std::move(object));
    return reading.Finish();
}

CResult WriteRoi(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks)
{
    const SPage& page = PageToWrite(document, context);
    const SObject* pWritten = nullptr;
    for (const SObject& object : page.objects) {
        if (!IsRegionOfImageJ(object, remarks))
            continue;
        if (pWritten) {
            remarks.push_back({object.name, "It is left out: a file holds one region; a set holds all."});
            continue;
        }
        pWritten = &object;
        bytes = EncodeRegion(object, document.pages.size() > 1 ? page.page + 1 : 0, remarks);
    }
    TellPageLosses(document, page, remarks);
    TellOtherPages(document, page, remarks);
    return pWritten ? CResult::Success() : CResult::Failure("There is no annotation that ImageJ knows.");
}

} // namespace Vantor::Annotations
