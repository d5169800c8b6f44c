// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#import "MenuBar/macOS/StatusMenu.h"

#include "Look/macOS/NativeText.h"
#include "MenuBar/ShownRows.h"

namespace {

NSAttributedString *styledText(const MenuRow &row)
{
    if (row.style == MenuRow::Style::Body)
        return nil; // the plain title does
    NSFont *const font = row.style == MenuRow::Style::Headline
                             ? [NSFont boldSystemFontOfSize:[NSFont menuFontOfSize:0].pointSize]
                             : [NSFont menuFontOfSize:NSFont.smallSystemFontSize];
    return [[NSAttributedString alloc] initWithString:nativeText(row.text) attributes:@{NSFontAttributeName : font}];
}

} // namespace

/// An item that stands for a row.
@interface RowItem : NSMenuItem
@end

@implementation RowItem {
    MenuRow _row;
}

- (void)show:(const MenuRow &)row
{
    _row = row;
    self.title = nativeText(row.text);
    self.attributedTitle = styledText(row);
    self.enabled = row.isCommand();
    self.target = self;
    self.action = @selector(chooseRow:);
}

- (void)chooseRow:(id)sender
{
    const MenuRow row = _row; // a copy: the action may change the rows
    choose(row);
}

@end

@implementation StatusMenu {
    ShownRows _shown;
    bool _open;
}

- (instancetype)init
{
    self = [super init];
    _menu = [[NSMenu alloc] initWithTitle:@""];
    _menu.autoenablesItems = NO; // rows of text stay disabled
    _menu.delegate = self;
    return self;
}

- (void)setRows:(const MenuRows &)rows
{
    [self apply:_shown.setNewest(rows, _open)];
}

- (void)apply:(ShownRows::Change)change
{
    const bool otherItems = change == ShownRows::Change::Items;
    if (otherItems)
        [_menu removeAllItems];
    NSInteger index = 0;
    for (const MenuRow &row : _shown.rows()) {
        const bool divider = row.kind == MenuRow::Kind::Divider;
        if (otherItems)
            [_menu addItem:divider ? [NSMenuItem separatorItem] : [[RowItem alloc] init]];
        NSMenuItem *const item = [_menu itemAtIndex:index++];
        if (!divider)
            [static_cast<RowItem *>(item) show:row];
    }
}

- (void)menuWillOpen:(NSMenu *)menu
{
    _open = true;
}

- (void)menuDidClose:(NSMenu *)menu
{
    // It counts as open until no menu is tracked any more: the chosen item's action comes after this, and must find the
    // item in its place.
    [self performSelector:@selector(catchUp)
               withObject:nil
               afterDelay:0
                  inModes:@[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode ]];
}

- (void)catchUp
{
    _open = false;
    [self apply:_shown.update(_open)];
}

@end
