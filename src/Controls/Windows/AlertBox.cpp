// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Windows/AlertBox.h"

#include "Controls/AccessibleRole.h"
#include "Controls/Windows/ScreenRoom.h"
#include "Look/ColourPreference.h"

#include <QAccessible>
#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QTextDocument>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int textWidth = 60; // in characters of an average width
// The share of the screen that the informative text may take; the rest is for the headline and the buttons.
constexpr double textShare = 0.5;
// More fills any screen, and laying out the whole of a very long text takes seconds.
constexpr qsizetype measuredLength = 20'000;

QWidget *icon(Alert::Style style)
{
    const QStyle *const look = QApplication::style();
    const auto picture =
        style == Alert::Style::Warning ? QStyle::SP_MessageBoxWarning : QStyle::SP_MessageBoxInformation;
    const int side = look->pixelMetric(QStyle::PM_MessageBoxIconSize);
    auto *const icon = new QLabel;
    icon->setPixmap(look->standardIcon(picture).pixmap(QSize(side, side), icon->devicePixelRatioF()));
    return icon;
}

QLabel *headline(const QString &text)
{
    auto *const headline = new QLabel(text);
    headline->setTextFormat(Qt::PlainText);
    headline->setWordWrap(true);
    QFont bold = headline->font();
    bold.setBold(true);
    headline->setFont(bold);
    return headline;
}

int wrappedHeight(const QString &text, const QFont &font, int width)
{
    QTextDocument document;
    document.setDocumentMargin(0.0);
    document.setDefaultFont(font);
    document.setPlainText(text.first(std::min(text.size(), measuredLength)));
    document.setTextWidth(width);
    return static_cast<int>(std::ceil(document.size().height()));
}

/// A text that looks like a label and scrolls where it has to.
QPlainTextEdit *scrollingText(const QString &text)
{
    auto *const edit = new QPlainTextEdit(text);
    edit->setReadOnly(true);
    edit->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    edit->setTabChangesFocus(true);
    edit->setFrameShape(QFrame::NoFrame);
    edit->viewport()->setAutoFillBackground(false);
    edit->document()->setDocumentMargin(0.0);
    edit->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    edit->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return edit;
}

} // namespace

AlertBox::AlertBox(const Alert &alert) : m_buttonCount(alert.buttons.size())
{
    ColourPreference::follow();
    AccessibleRole::give(this, QAccessible::AlertMessage);
    setWindowModality(Qt::ApplicationModal);
    setAccessibleName(alert.messageText);
    setAccessibleDescription(alert.informativeText);
    auto *const content = new QHBoxLayout;
    content->setSpacing(16);
    content->addWidget(icon(alert.style), 0, Qt::AlignTop);
    content->addLayout(texts(alert), 1);
    auto *const column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    column->setSpacing(16);
    column->addLayout(content);
    column->addWidget(buttons(alert.buttons));
}

qsizetype AlertBox::pressedButton(int result) const { return result > 0 ? result - 1 : m_buttonCount - 1; }

void AlertBox::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

QLayout *AlertBox::texts(const Alert &alert)
{
    QPlainTextEdit *const text = scrollingText(alert.informativeText);
    text->setAccessibleName(alert.messageText);
    fit(text);
    auto *const column = new QVBoxLayout;
    column->setSpacing(8);
    column->addWidget(headline(alert.messageText));
    column->addWidget(text);
    column->addStretch();
    return column;
}

void AlertBox::fit(QPlainTextEdit *text) const
{
    const QRect room = ScreenRoom::forContent(ScreenRoom::pointed());
    const int width = std::min(text->fontMetrics().averageCharWidth() * textWidth, room.width() / 2);
    const int whole = wrappedHeight(text->toPlainText(), text->font(), width);
    const int height = std::min(whole, static_cast<int>(room.height() * textShare));
    if (height < whole)
        text->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    const int scrollBar = height < whole ? text->verticalScrollBar()->sizeHint().width() : 0;
    text->setFixedSize(width + scrollBar, height);
}

QWidget *AlertBox::buttons(const QStringList &texts)
{
    auto *const row = new QDialogButtonBox(this); // whose focus the button's is to be
    row->setCenterButtons(style()->styleHint(QStyle::SH_MessageBox_CenterButtons, nullptr, this) != 0);
    for (qsizetype index = 0; index < texts.size(); ++index) {
        const auto role = index == 0 ? QDialogButtonBox::AcceptRole : QDialogButtonBox::RejectRole;
        QPushButton *const button = row->addButton(QString(texts[index]).replace(u'&', u"&&"_s), role);
        button->setDefault(index == 0);
        connect(button, &QPushButton::clicked, this, [this, index] { done(static_cast<int>(index) + 1); });
        if (index == 0)
            button->setFocus();
    }
    return row;
}
