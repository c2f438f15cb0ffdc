// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/ocr/CImage2DProcessOCRDlgParameterDelegate.h>

#include <VantorCommon/process/FolderEditor_p.h>

#include <QComboBox>
#include <QSpinBox>
#include <QStandardItemModel>

namespace
{
enum ERow { ERow_LanguageCode, ERow_LanguagePath, ERow_UserDefinedDpi };

constexpr int kValueColumn = 1;
constexpr int kMinDpi = 1;
constexpr int kMaxDpi = 1024;
/// Deliberate: the resolution opens at 70, not at the stored value.
constexpr int kFirstDpi = 70;

QWidget* CreateLanguageEditor(QWidget* pParent)
{
    auto* pCombo = new QComboBox(pParent);
    pCombo->addItems({QStringLiteral("eng"), QStringLiteral("vie"), QStringLiteral("kor")});
    return pCombo;
}

QWidget* CreateDpiEditor(QWidget* pParent)
{
    auto* pSpin = new QSpinBox(pParent);
    pSpin->setRange(kMinDpi, kMaxDpi);
    pSpin->setValue(kFirstDpi);
    return pSpin;
}

QWidget* CreateEditor(int nRow, QWidget* pParent)
{
    switch (nRow) {
    case ERow_LanguageCode:
        return CreateLanguageEditor(pParent);
    case ERow_LanguagePath:
        return FolderEditor::Create(pParent);
    case ERow_UserDefinedDpi:
        return CreateDpiEditor(pParent);
    }
    return nullptr;
}

/// Null when there is nothing to write back.
QString TextOf(QWidget* pEditor, int nRow)
{
    if (const auto* pCombo = qobject_cast<QComboBox*>(pEditor); pCombo && nRow == ERow_LanguageCode)
        return pCombo->currentText();
    if (FolderEditor::IsOne(pEditor) && nRow == ERow_LanguagePath)
        return FolderEditor::Chosen(pEditor);
    if (auto* pSpin = qobject_cast<QSpinBox*>(pEditor); pSpin && nRow == ERow_UserDefinedDpi) {
        pSpin->interpretText();
        return QString::number(pSpin->value());
    }
    return {};
}
} // namespace

CImage2DProcessOCRDlgParameterDelegate::CImage2DProcessOCRDlgParameterDelegate(QObject* pParent)
    : QStyledItemDelegate(pParent)
{
}

CImage2DProcessOCRDlgParameterDelegate::~CImage2DProcessOCRDlgParameterDelegate() = default;

QWidget* CImage2DProcessOCRDlgParameterDelegate::createEditor(QWidget* pParent, const QStyleOptionViewItem&,
                                                              const QModelIndex& index) const
{
    if (index.column() != kValueColumn || !qobject_cast<const QStandardItemModel*>(index.model()))
        return nullptr;
    QWidget* pEditor = CreateEditor(index.row(), pParent);
    if (pEditor)
        pEditor->setAccessibleName(index.sibling(index.row(), 0).data().toString());
    return pEditor;
}

void CImage2DProcessOCRDlgParameterDelegate::setEditorData(QWidget*, const QModelIndex&) const
{
}

void CImage2DProcessOCRDlgParameterDelegate::setModelData(QWidget* pEditor, QAbstractItemModel* pModel,
                                                          const QModelIndex& index) const
{
    const QString strText = TextOf(pEditor, index.row());
    if (pModel && !strText.isNull())
        pModel->setData(index, strText, Qt::EditRole);
}

void CImage2DProcessOCRDlgParameterDelegate::updateEditorGeometry(QWidget* pEditor,
                                                                  const QStyleOptionViewItem& option,
                                                                  const QModelIndex& index) const
{
    if (!pEditor->isWindow())
        QStyledItemDelegate::updateEditorGeometry(pEditor, option, index);
}

bool CImage2DProcessOCRDlgParameterDelegate::eventFilter(QObject* pEditor, QEvent* pEvent)
{
    return FolderEditor::IsLeftAlone(pEditor, pEvent) ? false
                                                      : QStyledItemDelegate::eventFilter(pEditor, pEvent);
}
