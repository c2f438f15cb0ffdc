// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/edit/EditContext_p.h>

#include <QObject>
#include <QPointer>
#include <memory>

class CImageView2DDrawableText;
class QPlainTextEdit;
class QPointF;
class QWidget;

/// Edits a text in its place on the view. Enter ends a line; Ctrl+Enter, a click or the wheel elsewhere and
/// the loss of the focus end the editing, which becomes one undoable step; Escape cancels it, and so does the
/// end of the annotations or of the view. A new text without letters is not added; a text that loses all its
/// letters is deleted.
class CTextHandler : public QObject
{
public:
    using TextPtr = std::shared_ptr<CImageView2DDrawableText>;

    explicit CTextHandler(const SEditContext& context);
    ~CTextHandler() override;

    /// Edits a text of the model, or a new one, whose letters get the size of labels at the current zoom.
    void Begin(const TextPtr& pText);
    /// The newest text at the point, in image coordinates.
    /// @return whether there is one
    bool BeginAt(const QPointF& point);
    void End();
    void Cancel();

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    bool IsOfEditor(QObject* pWatched) const;
    bool FilterEditor(QEvent* pEvent);
    QString CloseEditor();
    void Commit(const TextPtr& pText, const QString& strText);

    const SEditContext& m_context;
    QPointer<QPlainTextEdit> m_pEditor; ///< null while no text is edited
    TextPtr m_pText;
};
