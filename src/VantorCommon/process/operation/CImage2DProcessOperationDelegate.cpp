// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/operation/CImage2DProcessOperationDelegate.h>

#include <VantorCommon/process/FolderEditor_p.h>

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QSpinBox>
#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
constexpr int kValueColumn = 1;
constexpr int kMostDecimals = 6;

/// One decimal more than the step has.
int DecimalsOf(double dblStep)
{
    int nDecimals = 0;
    for (double d = dblStep; nDecimals < kMostDecimals && std::abs(d - std::round(d)) > 1e-9; d *= 10.0)
        ++nDecimals;
    return std::min(nDecimals + 1, kMostDecimals);
}

QWidget* CreateChoice(const SProcessParameter& parameter, QWidget* pParent)
{
    auto* pCombo = new QComboBox(pParent);
    pCombo->addItems(parameter.lstChoices);
    return pCombo;
}

QWidget* CreateWhole(const SProcessParameter& parameter, QWidget* pParent)
{
    auto* pSpin = new QSpinBox(pParent);
    pSpin->setRange(static_cast<int>(parameter.dblLeast), static_cast<int>(parameter.dblMost));
    pSpin->setSingleStep(static_cast<int>(parameter.dblStep));
    pSpin->setValue(parameter.varDefault.toInt());
    return pSpin;
}

QWidget* CreateReal(const SProcessParameter& parameter, QWidget* pParent)
{
    auto* pSpin = new QDoubleSpinBox(pParent);
    pSpin->setDecimals(DecimalsOf(parameter.dblStep));
    pSpin->setRange(parameter.dblLeast, parameter.dblMost);
    pSpin->setSingleStep(parameter.dblStep);
    pSpin->setValue(parameter.varDefault.toDouble());
    return pSpin;
}

QWidget* CreateEditor(const SProcessParameter& parameter, QWidget* pParent)
{
    switch (parameter.eKind) {
    case EProcessParameter_Choice:
        return CreateChoice(parameter, pParent);
    case EProcessParameter_Whole:
        return CreateWhole(parameter, pParent);
    case EProcessParameter_Real:
        return CreateReal(parameter, pParent);
    case EProcessParameter_Folder:
        return FolderEditor::Create(pParent);
    case EProcessParameter_Text:
        break;
    }
    return new QLineEdit(pParent);
}

/// @{
/// The value of an editor; invalid if it is not of the kind.
template <class Spin> QVariant NumberOf(QWidget* pEditor)
{
    auto* pSpin = qobject_cast<Spin*>(pEditor);
    if (!pSpin)
        return {};
    pSpin->interpretText();
    return pSpin->value();
}

QVariant ChoiceOf(const SProcessParameter& parameter, QWidget* pEditor)
{
    const auto* pCombo = qobject_cast<const QComboBox*>(pEditor);
    const QString strChoice = pCombo ? parameter.lstChoices.value(pCombo->currentIndex()) : QString();
    return strChoice.isNull() ? QVariant() : QVariant(strChoice);
}

QVariant TextOf(QWidget* pEditor)
{
    const auto* pLine = qobject_cast<const QLineEdit*>(pEditor);
    return pLine ? QVariant(pLine->text()) : QVariant();
}

QVariant FolderOf(QWidget* pEditor)
{
    const QString strFolder = FolderEditor::Chosen(pEditor);
    return strFolder.isNull() ? QVariant() : QVariant(strFolder);
}
/// @}
} // namespace

CImage2DProcessOperationDelegate::CImage2DProcessOperationDelegate(
    std::vector<SProcessParameter> vctParameters, QObject* pParent)
    : QStyledItemDelegate(pParent), m_vctParameters(std::move(vctParameters))
{
}

CImage2DProcessOperationDelegate::~CImage2DProcessOperationDelegate() = default;

const SProcessParameter* CImage2DProcessOperationDelegate::ParameterOf(const QModelIndex& index) const
{
    const auto nRow = static_cast<std::size_t>(index.row());
    return index.row() >= 0 && nRow < m_vctParameters.size() ? &m_vctParameters[nRow] : nullptr;
}

QWidget* CImage2DProcessOperationDelegate::createEditor(QWidget* pParent, const QStyleOptionViewItem&,
                                                        const QModelIndex& index) const
{
    const SProcessParameter* pParameter = ParameterOf(index);
    if (!pParameter || index.column() != kValueColumn)
        return nullptr;
    QWidget* pEditor = CreateEditor(*pParameter, pParent);
    pEditor->setAccessibleName(index.sibling(index.row(), 0).data().toString());
    return pEditor;
}

QVariant CImage2DProcessOperationDelegate::ValueOf(QWidget* pEditor, const QModelIndex& index) const
{
    const SProcessParameter* pParameter = ParameterOf(index);
    if (!pParameter)
        return {};
    switch (pParameter->eKind) {
    case EProcessParameter_Choice:
        return ChoiceOf(*pParameter, pEditor);
    case EProcessParameter_Whole:
        return NumberOf<QSpinBox>(pEditor);
    case EProcessParameter_Real:
        return NumberOf<QDoubleSpinBox>(pEditor);
    case EProcessParameter_Folder:
        return FolderOf(pEditor);
    case EProcessParameter_Text:
        break;
    }
    return TextOf(pEditor);
}

void CImage2DProcessOperationDelegate::setEditorData(QWidget* pEditor, const QModelIndex& index) const
{
    const QVariant varValue = index.data(Qt::EditRole);
    if (auto* pCombo = qobject_cast<QComboBox*>(pEditor))
        pCombo->setCurrentText(varValue.toString());
    else if (auto* pSpin = qobject_cast<QSpinBox*>(pEditor))
        pSpin->setValue(varValue.toInt());
    else if (auto* pReal = qobject_cast<QDoubleSpinBox*>(pEditor))
        pReal->setValue(varValue.toDouble());
    else if (auto* pLine = qobject_cast<QLineEdit*>(pEditor))
        pLine->setText(varValue.toString());
    else if (auto* pFolder = qobject_cast<QFileDialog*>(pEditor))
        pFolder->setDirectory(varValue.toString());
}

void CImage2DProcessOperationDelegate::setModelData(QWidget* pEditor, QAbstractItemModel* pModel,
                                                    const QModelIndex& index) const
{
    const QVariant varValue = ValueOf(pEditor, index);
    if (pModel && varValue.isValid())
        pModel->setData(index, varValue, Qt::EditRole);
}

void CImage2DProcessOperationDelegate::updateEditorGeometry(QWidget* pEditor,
                                                            const QStyleOptionViewItem& option,
                                                            const QModelIndex& index) const
{
    if (!pEditor->isWindow())
        QStyledItemDelegate::updateEditorGeometry(pEditor, option, index);
}

bool CImage2DProcessOperationDelegate::eventFilter(QObject* pEditor, QEvent* pEvent)
{
    return FolderEditor::IsLeftAlone(pEditor, pEvent) ? false
                                                      : QStyledItemDelegate::eventFilter(pEditor, pEvent);
}
