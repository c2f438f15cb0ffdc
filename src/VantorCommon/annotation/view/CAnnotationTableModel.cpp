// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/view/CAnnotationTableModel.h>

#include <VantorCommon/annotation/object/ShapeKinds.h>

#include <QMimeData>
#include <QSet>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace
{
const auto kRows = QStringLiteral("application/x-vantor-annotation-rows");

/// At most two digits behind the point.
QString NumberText(double dblValue)
{
    return QString::number(qRound64(dblValue * 100.0) / 100.0, 'g', 12);
}

QString PairText(double a, const QString& strBetween, double b)
{
    return NumberText(a) + strBetween + NumberText(b);
}

QVariant CheckState(bool bChecked)
{
    return static_cast<int>(bChecked ? Qt::Checked : Qt::Unchecked);
}
} // namespace

CAnnotationTableModel::CAnnotationTableModel(QObject* pParent)
    : QAbstractTableModel(pParent), m_pFollow(new QTimer(this)),
      m_lstHeaders({QStringLiteral("Name"), QStringLiteral("Kind"), QStringLiteral("Position"),
                    QStringLiteral("Size"), QStringLiteral("Locked"), QStringLiteral("Visible"),
                    QStringLiteral("Page")}),
      m_kindText([](const SShapeKind& kind) { return kind.strName; })
{
    m_pFollow->setSingleShot(true);
    connect(m_pFollow, &QTimer::timeout, this, &CAnnotationTableModel::Follow);
}

CAnnotationTableModel::~CAnnotationTableModel() = default;

void CAnnotationTableModel::SetGeometryModel(CImageView2DGeometryModel* pGeometry)
{
    if (m_pGeometry == pGeometry)
        return;
    if (m_pGeometry)
        disconnect(m_pGeometry.data(), nullptr, this, nullptr);
    m_pGeometry = pGeometry;
    if (pGeometry) {
        using M = CImageView2DGeometryModel;
        const auto on = [this, pGeometry](auto pSignal) {
            connect(pGeometry, pSignal, this, &CAnnotationTableModel::FollowLater);
        };
        on(&M::signal_AddDrawableObject);
        on(&M::signal_DeleteDrawableObject);
        on(&M::signal_ChangeDrawableObjectProperty);
        on(&M::signal_ChangeOrder);
        on(&M::signal_ClearObject);
        connect(pGeometry, &QObject::destroyed, this, &CAnnotationTableModel::FollowLater);
    }
    FollowLater();
}

void CAnnotationTableModel::SetPage(int nPage)
{
    m_nPage = nPage;
    FollowLater();
}

void CAnnotationTableModel::SetTexts(const QStringList& lstHeaders,
                                     std::function<QString(const SShapeKind&)> kindText)
{
    for (int i = 0; i < std::min<int>(lstHeaders.size(), EColumn_Count); ++i)
        m_lstHeaders[i] = lstHeaders[i];
    if (kindText)
        m_kindText = std::move(kindText);
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, EColumn_Count - 1);
    FollowLater();
}

CAnnotationTableModel::ObjectPtr CAnnotationTableModel::GetObject(int nRow) const
{
    return nRow >= 0 && nRow < rowCount() ? m_vctRows[static_cast<std::size_t>(nRow)] : nullptr;
}

void CAnnotationTableModel::FollowLater()
{
    if (!m_pFollow->isActive())
        m_pFollow->start(0);
}

/// What is alike at the top and at the bottom stays; between them the rows are new.
void CAnnotationTableModel::Follow()
{
    const ObjectList vctNow = m_pGeometry ? m_pGeometry->GetObjects() : ObjectList();
    const auto differ = std::mismatch(m_vctRows.begin(), m_vctRows.end(), vctNow.begin(), vctNow.end());
    const auto differEnd = std::mismatch(m_vctRows.rbegin(), std::make_reverse_iterator(differ.first),
                                         vctNow.rbegin(), std::make_reverse_iterator(differ.second));
    ReplaceRows(static_cast<int>(differ.first - m_vctRows.begin()),
                static_cast<int>(differEnd.first.base() - differ.first),
                ObjectList(differ.second, differEnd.second.base()));
    if (!m_vctRows.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, EColumn_Count - 1));
    Q_EMIT signal_Followed();
}

void CAnnotationTableModel::ReplaceRows(int nFirst, int nOld, const ObjectList& vctNew)
{
    const auto itFirst = m_vctRows.begin() + nFirst;
    if (nOld > 0) {
        beginRemoveRows({}, nFirst, nFirst + nOld - 1);
        m_vctRows.erase(itFirst, itFirst + nOld);
        endRemoveRows();
    }
    if (!vctNew.empty()) {
        beginInsertRows({}, nFirst, nFirst + static_cast<int>(vctNew.size()) - 1);
        m_vctRows.insert(m_vctRows.begin() + nFirst, vctNew.begin(), vctNew.end());
        endInsertRows();
    }
}

int CAnnotationTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_vctRows.size());
}

int CAnnotationTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(EColumn_Count);
}

QVariant CAnnotationTableModel::data(const QModelIndex& index, int nRole) const
{
    const ObjectPtr pObject = GetObject(index.row());
    if (!pObject)
        return {};
    const int nColumn = index.column();
    if (nRole == Qt::CheckStateRole && nColumn == EColumn_Locked)
        return CheckState(pObject->IsLocked());
    if (nRole == Qt::CheckStateRole && nColumn == EColumn_Visible)
        return CheckState(pObject->IsVisible());
    // A reader of the screen says the column, for a check box alone has no text.
    if (nRole == Qt::AccessibleTextRole && (nColumn == EColumn_Locked || nColumn == EColumn_Visible))
        return m_lstHeaders[nColumn];
    if (nRole != Qt::DisplayRole && nRole != Qt::EditRole)
        return {};
    const QRectF box = pObject->GetBoundary().normalized();
    const SShapeKind* pKind = ShapeKinds::Of(*pObject);
    switch (nColumn) {
    case EColumn_Name:
        return pObject->GetName();
    case EColumn_Kind:
        return pKind ? m_kindText(*pKind) : QString();
    case EColumn_Position:
        return PairText(box.x(), QStringLiteral(", "), box.y());
    case EColumn_Size:
        return PairText(box.width(), QStringLiteral(" \u00d7 "), box.height());
    case EColumn_Page:
        return m_nPage > 0 ? QString::number(m_nPage) : QString();
    default:
        return {};
    }
}

QVariant CAnnotationTableModel::headerData(int nSection, Qt::Orientation eOrientation, int nRole) const
{
    if (eOrientation != Qt::Horizontal || nRole != Qt::DisplayRole)
        return {};
    return m_lstHeaders.value(nSection);
}

Qt::ItemFlags CAnnotationTableModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::ItemIsDropEnabled; // between rows
    const Qt::ItemFlags flags =
        Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
    if (index.column() == EColumn_Name)
        return flags | Qt::ItemIsEditable;
    const bool bCheck = index.column() == EColumn_Locked || index.column() == EColumn_Visible;
    return bCheck ? flags | Qt::ItemIsUserCheckable : flags;
}

CAnnotationTableModel::ObjectList CAnnotationTableModel::WithSelected(const ObjectPtr& pObject) const
{
    if (!pObject->GetSelected())
        return {pObject};
    ObjectList vctObjects;
    std::copy_if(m_vctRows.begin(), m_vctRows.end(), std::back_inserter(vctObjects),
                 [](const ObjectPtr& pRow) { return pRow->GetSelected(); });
    return vctObjects;
}

bool CAnnotationTableModel::setData(const QModelIndex& index, const QVariant& value, int nRole)
{
    const ObjectPtr pObject = GetObject(index.row());
    if (!pObject)
        return false;
    const bool bChecked = value.toInt() == Qt::Checked;
    if (index.column() == EColumn_Name && nRole == Qt::EditRole) {
        // An editor that was left as it is gives no name.
        if (value.toString() != pObject->GetName())
            Q_EMIT signal_Rename(pObject, value.toString());
    } else if (index.column() == EColumn_Locked && nRole == Qt::CheckStateRole) {
        Q_EMIT signal_SetLocked(WithSelected(pObject), bChecked);
    } else if (index.column() == EColumn_Visible && nRole == Qt::CheckStateRole) {
        Q_EMIT signal_SetVisible(WithSelected(pObject), bChecked);
    } else {
        return false;
    }
    return true;
}

QStringList CAnnotationTableModel::mimeTypes() const
{
    return {kRows};
}

QMimeData* CAnnotationTableModel::mimeData(const QModelIndexList& lstIndexes) const
{
    QByteArray bytes;
    for (const QModelIndex& index : lstIndexes)
        if (const ObjectPtr pObject = GetObject(index.row()))
            bytes += QByteArray::number(pObject->GetUID()) + ' ';
    auto* pData = new QMimeData;
    pData->setData(kRows, bytes);
    return pData;
}

Qt::DropActions CAnnotationTableModel::supportedDropActions() const
{
    return Qt::MoveAction;
}

bool CAnnotationTableModel::dropMimeData(const QMimeData* pData, Qt::DropAction eAction, int nRow, int,
                                         const QModelIndex& parent)
{
    if (!pData || eAction != Qt::MoveAction || !pData->hasFormat(kRows) || parent.isValid())
        return false;
    QSet<unsigned int> uids;
    for (const QByteArray& number : pData->data(kRows).split(' '))
        uids.insert(number.toUInt());
    const int nTarget = nRow < 0 ? rowCount() : nRow;
    ObjectList vctMoved;
    int nAbove = 0;
    for (int i = 0; i < rowCount(); ++i) {
        if (!uids.contains(GetObject(i)->GetUID()))
            continue;
        vctMoved.push_back(GetObject(i));
        nAbove += i < nTarget ? 1 : 0;
    }
    if (vctMoved.empty())
        return false;
    Q_EMIT signal_MoveTo(vctMoved, nTarget - nAbove);
    return true;
}
