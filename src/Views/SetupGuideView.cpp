// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Views/SetupGuideView.h"

#include "Controls/Boxes/Divider.h"
#include "Controls/Boxes/RoundedBox.h"
#include "Controls/Labels/CodeBlock.h"
#include "Controls/Labels/EmojiLabel.h"
#include "Controls/Labels/LinkLabel.h"
#include "Controls/Labels/MarkedLabel.h"
#include "Views/SetupGuideText.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

using SetupGuideText::Box;
using SetupGuideText::Step;
using SetupGuideText::StepItem;

QVBoxLayout *column(int spacing)
{
    auto *const column = new QVBoxLayout;
    column->setSpacing(spacing);
    column->setContentsMargins(0, 0, 0, 0);
    return column;
}

TextLabel *wrapped(TextLabel *label)
{
    label->setWordWrap(true);
    return label;
}

QLayout *header()
{
    auto *const title = new TextLabel(SetupGuideText::title(), TextStyle::Title);
    title->setWeight(QFont::Bold);
    auto *const header = column(4);
    header->addWidget(wrapped(title));
    header->addWidget(
        wrapped(new TextLabel(SetupGuideText::subtitle(), TextStyle::Subheadline, Theme::Ink::Secondary)));
    return header;
}

QLayout *linkRow(const StepItem &item)
{
    auto *const link = new LinkLabel(item.text, item.address);
    auto *const row = new QHBoxLayout;
    row->setSpacing(0);
    row->addWidget(new BulletSpace);
    row->addWidget(link);
    row->addStretch();
    return row;
}

QLayout *stepSection(const Step &step)
{
    auto *const items = column(6);
    items->setContentsMargins(SymbolLabel::lineIndent, 0, 0, 0);
    for (const StepItem &item : step.items) {
        if (item.isLink())
            items->addLayout(linkRow(item));
        else
            items->addWidget(new BulletLabel(item.text));
    }
    const QString number = QString::number(step.number);
    auto *const section = column(8);
    section->addWidget(
        new SymbolLabel(number + u".circle.fill"_s, u"Step "_s + number + u": "_s + step.title, TextStyle::Headline));
    section->addLayout(items);
    return section;
}

QWidget *box(Theme::Box look, const Box &content)
{
    auto *const title = new EmojiLabel(content.title, TextStyle::Subheadline);
    title->setWeight(QFont::DemiBold);
    auto *const box = new RoundedBox(look);
    auto *const stack = new QVBoxLayout(box);
    stack->setSpacing(4);
    stack->setContentsMargins(Theme::boxPadding, Theme::boxPadding, Theme::boxPadding, Theme::boxPadding);
    stack->addWidget(wrapped(title));
    stack->addWidget(wrapped(new TextLabel(content.message, TextStyle::Caption, Theme::Ink::Secondary)));
    return box;
}

QWidget *warningBox(const Box &content) { return box(Theme::Box::Warning, content); }

QWidget *tipBox(const Box &content) { return box(Theme::Box::Tip, content); }

QWidget *note()
{
    auto *const note =
        wrapped(new TextLabel(SetupGuideText::appSecretNote(), TextStyle::Caption, Theme::Ink::Secondary));
    note->setContentsMargins(4, 0, 4, 0);
    return note;
}

QLayout *pasteSection()
{
    auto *const section = column(8);
    section->addWidget(new SymbolLabel(u"5.circle.fill"_s, SetupGuideText::pasteTitle(), TextStyle::Headline));
    section->addWidget(wrapped(new TextLabel(SetupGuideText::pasteText())));
    return section;
}

QWidget *page()
{
    auto *const page = new QWidget;
    auto *const stack = new QVBoxLayout(page);
    stack->setSpacing(24);
    stack->setContentsMargins(24, 24, 24, 24 + 20); // the last box brings its own space below
    stack->addLayout(header());
    stack->addWidget(new Divider);
    stack->addLayout(stepSection(SetupGuideText::createApp()));
    stack->addWidget(new Divider);
    stack->addLayout(stepSection(SetupGuideText::generateToken()));
    stack->addWidget(warningBox(SetupGuideText::shortLivedToken()));
    stack->addLayout(stepSection(SetupGuideText::longLivedToken()));
    stack->addWidget(new CodeBlock(SetupGuideText::exchangeCommand()));
    stack->addWidget(note());
    stack->addWidget(new Divider);
    stack->addLayout(stepSection(SetupGuideText::findAccountId()));
    stack->addWidget(new Divider);
    stack->addLayout(pasteSection());
    stack->addWidget(tipBox(SetupGuideText::permanentToken()));
    return page;
}

} // namespace

SetupGuideView::SetupGuideView()
{
    setMinimumSize(550, 600);
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setWidget(page());
}
