// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/store/AnnotationDocument_p.h>

#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <cmath>
#include <unordered_map>

using Vantor::Annotations::SObject;
using Vantor::Annotations::SPage;
using Vantor::Annotations::SStyle;

namespace
{
constexpr int kMaxDepth = 8;            // of what a host stores with an object
constexpr double kMaxPenWidth = 1000.0; // widget pixels
constexpr double kMaxInteger = 0x1p53;  // up to which a double holds every whole number

bool IsJson(const QVariant& value, int nDepth)
{
    if (nDepth > kMaxDepth)
        return false;
    const auto isJson = [nDepth](const QVariant& member) { return IsJson(member, nDepth + 1); };
    switch (static_cast<QMetaType::Type>(value.userType())) {
    case QMetaType::Bool:
    case QMetaType::QString:
    case QMetaType::QStringList:
    case QMetaType::Nullptr:
        return true;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return std::abs(value.toDouble()) <= kMaxInteger;
    case QMetaType::Float:
    case QMetaType::Double:
        return std::isfinite(value.toDouble());
    case QMetaType::QVariantList: {
        const QVariantList lst = value.toList();
        return std::all_of(lst.begin(), lst.end(), isJson);
    }
    case QMetaType::QVariantMap: {
        const QVariantMap map = value.toMap();
        return std::all_of(map.begin(), map.end(), isJson);
    }
    default:
        return false;
    }
}

/// Empty for what is no JSON value.
std::string JsonOf(const QVariant& value)
{
    if (!value.isValid() || !IsJson(value, 0))
        return {};
    // Only arrays and objects can be written, so the value goes in as a member.
    const QByteArray array =
        QJsonDocument(QJsonArray{QJsonValue::fromVariant(value)}).toJson(QJsonDocument::Compact);
    return array.mid(1, array.size() - 2).toStdString();
}

QVariant VariantOf(const std::string& json)
{
    const QByteArray array = '[' + QByteArray::fromStdString(json) + ']';
    return QJsonDocument::fromJson(array).array().at(0).toVariant();
}

SStyle StyleOf(const CImageView2DDrawableObject& object)
{
    SStyle style;
    if (object.GetPen().style() != Qt::NoPen) {
        style.penColor = object.GetPen().color().rgba();
        style.penWidth = object.GetPen().widthF();
    }
    if (object.GetBrushFilled().style() != Qt::NoBrush)
        style.fillColor = object.GetBrushFilled().color().rgba();
    return style;
}

void SetStyle(CImageView2DDrawableObject& object, const SStyle& style)
{
    if (style.penColor) {
        QPen pen(QColor::fromRgba(*style.penColor));
        pen.setWidthF(std::clamp(style.penWidth, 0.0, kMaxPenWidth));
        object.SetPen(pen);
    }
    if (style.fillColor)
        object.SetBrushFilled(QBrush(QColor::fromRgba(*style.fillColor)));
}

/// Whether it only marks the place of an object.
bool IsMark(const SObject& object)
{
    return object.kind.empty() && object.raw.empty();
}
} // namespace

SShapeData AnnotationDocument::ShapeOf(const CImageView2DDrawableObject& object)
{
    const SShapeKind* pKind = ShapeKinds::Of(object);
    return pKind && pKind->write ? pKind->write(object) : SShapeData();
}

bool AnnotationDocument::ChangeShape(CImageView2DDrawableObject& object, const SShapeData& data)
{
    const SShapeKind* pKind = ShapeKinds::Of(object);
    const ObjectPtr pLike = pKind && pKind->read ? pKind->read(data) : nullptr;
    auto* pShape = dynamic_cast<CImageView2DDrawableGeometry*>(&object);
    auto* pText = dynamic_cast<CImageView2DDrawableText*>(&object);
    const auto* pShapeLike = dynamic_cast<const CImageView2DDrawableGeometry*>(pLike.get());
    const auto* pTextLike = dynamic_cast<const CImageView2DDrawableText*>(pLike.get());
    if (pShape && pShapeLike) {
        pShape->ChangeData(pShapeLike->GetData());
    } else if (pText && pTextLike) {
        pText->SetText(pTextLike->GetText());
        pText->SetLineHeight(pTextLike->GetLineHeight());
        pText->SetPosition(pTextLike->GetPosition());
    } else {
        return false;
    }
    return true;
}

SObject AnnotationDocument::WriteObject(const CImageView2DDrawableObject& object)
{
    SObject file;
    const SShapeKind* pKind = ShapeKinds::Of(object);
    if (!pKind || !pKind->write)
        return file;
    SShapeData data = pKind->write(object);
    file.id = object.GetId().toStdString();
    file.kind = pKind->strName.toLower().toStdString();
    file.name = object.GetName().toStdString();
    file.named = object.IsNamed();
    file.showName = object.GetDisplayName();
    file.locked = object.IsLocked();
    file.visible = object.IsVisible();
    file.numbers = std::move(data.vctNumbers);
    file.text = data.strText.toStdString();
    file.style = StyleOf(object);
    file.extra = JsonOf(object.GetExtraInfo());
    return file;
}

AnnotationDocument::ObjectPtr AnnotationDocument::ReadObject(const SObject& object)
{
    const SShapeKind* pKind = ShapeKinds::OfKey(QString::fromStdString(object.kind));
    if (!object.raw.empty() || !pKind || !pKind->read)
        return nullptr;
    ObjectPtr pObject = pKind->read({object.numbers, QString::fromStdString(object.text)});
    if (!pObject)
        return nullptr;
    if (!object.id.empty())
        pObject->SetId(QString::fromStdString(object.id));
    if (object.named)
        pObject->RestoreName(QString::fromStdString(object.name), true);
    pObject->SetDisplayName(object.showName);
    pObject->SetLocked(object.locked);
    pObject->SetVisible(object.visible);
    SetStyle(*pObject, object.style);
    if (!object.extra.empty())
        pObject->SetExtraInfo(VariantOf(object.extra));
    return pObject;
}

AnnotationDocument::ObjectList AnnotationDocument::Unpack(SPage& page)
{
    ObjectList vctObjects;
    for (SObject& object : page.objects) {
        const ObjectPtr pObject = ReadObject(object);
        if (!pObject)
            continue;
        SObject mark;
        mark.id = pObject->GetId().toStdString();
        mark.unknown = std::move(object.unknown);
        object = std::move(mark);
        vctObjects.push_back(pObject);
    }
    // Places count for nothing when there is nothing to place.
    const bool bMarksOnly = std::all_of(page.objects.begin(), page.objects.end(), &IsMark);
    const auto isNeedless = [bMarksOnly](const SObject& object) {
        return bMarksOnly && object.unknown.empty();
    };
    page.objects.erase(std::remove_if(page.objects.begin(), page.objects.end(), isNeedless),
                       page.objects.end());
    return vctObjects;
}

int AnnotationDocument::CountKept(const SPage& page)
{
    const auto nMarks = std::count_if(page.objects.begin(), page.objects.end(), &IsMark);
    return static_cast<int>(page.objects.size()) - static_cast<int>(nMarks);
}

SPage AnnotationDocument::Pack(const SPage& page, const ObjectList& vctObjects)
{
    std::vector<SObject> vctWritten;
    std::unordered_map<std::string, std::size_t> places;
    for (const ObjectPtr& pObject : vctObjects) {
        SObject object = WriteObject(*pObject);
        if (object.kind.empty())
            continue;
        places.emplace(object.id, vctWritten.size());
        vctWritten.push_back(std::move(object));
    }
    // What is kept hangs behind the nearest object above it that is still there; 0: above all.
    std::vector<std::vector<SObject>> vctKept(vctWritten.size() + 1);
    std::size_t nBehind = 0;
    for (const SObject& object : page.objects) {
        const auto it = places.find(object.id);
        if (!IsMark(object)) {
            vctKept[nBehind].push_back(object);
        } else if (it != places.end()) {
            nBehind = it->second + 1;
            vctWritten[it->second].unknown = object.unknown;
        }
    }
    SPage packed = page;
    packed.objects = std::move(vctKept[0]);
    for (std::size_t i = 0; i < vctWritten.size(); ++i) {
        packed.objects.push_back(std::move(vctWritten[i]));
        for (SObject& object : vctKept[i + 1])
            packed.objects.push_back(std::move(object));
    }
    return packed;
}
