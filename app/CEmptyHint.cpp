// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CEmptyHint.h"

#include "CRecentFiles.h"

#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QAction>
#include <QEvent>
#include <QFileInfo>
#include <algorithm>

namespace
{
constexpr int kMaxFiles = 5;
constexpr int kMargin = 8;      // pixels, to the edges of the view
constexpr int kMinWidth = 60;   // below, a word does not fit
constexpr int kMaxLetters = 40; // of a name

bool IsOpening(const CImageView2DCtrl* pCtrl)
{
    const auto vctJobs = CJobs::Get().GetJobs();
    return std::any_of(vctJobs.begin(), vctJobs.end(),
                       [=](const auto& pJob) { return pJob->GetReceiver() == pCtrl; });
}

QString Shortened(const QString& strName)
{
    return strName.size() <= kMaxLetters ? strName : strName.left(kMaxLetters - 1) + QChar(0x2026);
}
} // namespace

CEmptyHint::CEmptyHint(const SViewer& viewer, const QAction* pOpen, const CRecentFiles* pRecent,
                       std::function<void(const QString&)> open)
    : QLabel(viewer.View2D()), m_viewer(viewer), m_pOpen(pOpen), m_pRecent(pRecent)
{
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setTextFormat(Qt::RichText);
    setTextInteractionFlags(Qt::LinksAccessibleByMouse); // by keys the same files are in the menu
    setFocusPolicy(Qt::NoFocus);
    setContextMenuPolicy(Qt::NoContextMenu);
    setCursor(Qt::ArrowCursor);
    // The view around it is grey in every scheme.
    QPalette legible = palette();
    legible.setColor(QPalette::WindowText, Qt::black);
    setPalette(legible);
    connect(this, &QLabel::linkActivated, this, [this, open = std::move(open)](const QString& strLink) {
        const QString strPath = m_pRecent->Files().value(strLink.toInt());
        if (!strPath.isEmpty())
            open(strPath);
    });
    const auto* pModel = m_viewer.Ctrl2D()->GetImageModel();
    connect(pModel, &CImageView2DModel::signal_ChangeImageList, this, &CEmptyHint::Update);
    connect(pModel, &CImageView2DModel::signal_ChangeCurrentImage, this, &CEmptyHint::Update);
    connect(&CJobs::Get(), &CJobs::signal_Changed, this, &CEmptyHint::Update);
    connect(m_pRecent, &CRecentFiles::signal_Changed, this, &CEmptyHint::Update);
    connect(m_pOpen, &QAction::changed, this, &CEmptyHint::Update);
    m_viewer.View2D()->installEventFilter(this);
    Update();
}

QString CEmptyHint::Text(int nFiles) const
{
    const QString strKey = m_pOpen->shortcut().toString(QKeySequence::NativeText);
    QString strText =
        QStringLiteral("<p><big>%1</big></p>")
            .arg(strKey.isEmpty() ? tr("Drop files here") : tr("Drop files here or press %1").arg(strKey));
    const QStringList lstFiles = m_pRecent->Files().mid(0, nFiles);
    for (int i = 0; i < lstFiles.size(); ++i)
        strText += QStringLiteral("<a href=\"%1\" style=\"color:black\">%2</a><br>")
                       .arg(i)
                       .arg(Shortened(QFileInfo(lstFiles[i]).fileName()).toHtmlEscaped());
    return strText;
}

void CEmptyHint::Update()
{
    const bool bEmpty = !m_viewer.HasImage() && !IsOpening(m_viewer.Ctrl2D());
    setVisible(bEmpty && Fit(parentWidget()->rect().adjusted(kMargin, kMargin, -kMargin, -kMargin)));
}

/// Names as many files as there is room for. @return false where there is none for anything
bool CEmptyHint::Fit(const QRect& room)
{
    for (int nFiles = kMaxFiles; nFiles >= 0; --nFiles) {
        setText(Text(nFiles));
        QRect place(0, 0, room.width(), heightForWidth(room.width()));
        if (room.width() < kMinWidth || place.height() > room.height())
            continue;
        place.moveCenter(room.center());
        setGeometry(place);
        return true;
    }
    return false;
}

bool CEmptyHint::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pEvent->type() == QEvent::Resize || pEvent->type() == QEvent::Show)
        Update();
    return QLabel::eventFilter(pWatched, pEvent);
}
