// The command surface of the main window as data: the menu tree (names,
// captions, the handler each item runs), the two toolbars (button indices,
// handlers, icons, hover texts, drop-downs), and the command names of the
// form "File-Open" that DoCommand maps to handlers. The window builds its
// menus and toolbars from these tables; control buttons run command names.
//
// Handlers are registered by name (the menu name without "_Click"). A menu
// item or toolbar button is enabled while its handler is registered and the
// handler's `enabled` test (if any) says so; an item whose handler is not
// registered yet is shown disabled. Wiring a new command:
//
//   RegisterHandler("mnuMiddleP", mnuMiddleP_Click);
//
// in a Register...Commands() function of its subsystem, called from
// RegisterAllCommands() in command_table.cpp.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "document/host.h"

namespace vt {

// ---- the tables -----------------------------------------------------------------

enum class MenuRole {
  Menu,   // a menu of the menu bar, or a submenu
  Popup,  // a context menu (GraphEdit, FunEdit), not on the menu bar
  Item,   // a command
};

struct MenuItemDef {
  const char* name;     // object name: "mnuFileNew"
  const char* caption;  // "New"
  const char* parent;   // the menu that holds it; "" for the menu bar and the context menus
  MenuRole role;
  const char* handler;   // items: the handler's menu name ("mnuFUndo" for mnuGraphUndo)
  const char* shortcut;  // key sequence text ("Ctrl+N"), or ""
  bool check;            // shows a check mark that mirrors the handler's state
  bool separatorBefore;
};

// The whole tree, each menu before its items, items in menu order.
const std::vector<MenuItemDef>& MenuTable();
// The entry of a name, or nullptr.
const MenuItemDef* FindMenuItem(const std::string& name);

struct CommandNameDef {
  const char* command;  // "File-Open"
  const char* handler;  // "mnuFileOpen"
};
// The command names in table order.
const std::vector<CommandNameDef>& CommandTable();
// The handler of a command name, or nullptr for an unknown name.
const char* CommandHandler(const std::string& command);

struct ToolbarButtonDef {
  int toolbar;  // 1 or 2
  int index;    // the button's index; the indices between buttons are separators
  const char* handler;
  const char* icon;    // file name in the icons folder, without ".svg"
  const char* status;  // the hover text shown in the status bar
  bool check;          // shown pressed while the handler's state is on
};
// Both toolbars, each in button order.
const std::vector<ToolbarButtonDef>& ToolbarTable();
// The largest index of a toolbar (separators included).
int ToolbarLength(int toolbar);
const ToolbarButtonDef* FindToolbarButton(int toolbar, int index);

struct DropDownDef {
  const char* key;  // "barFreePoint"
  int toolbar;
  int index;            // the button that holds the drop-down
  const char* handler;  // the command of the same menu row; the caption is that row's
  const char* icon;
};
const std::vector<DropDownDef>& DropDownTable();

// ---- handlers -------------------------------------------------------------------

// Registers (or replaces) the handler of a menu name. `enabled` and `checked`
// are optional tests read whenever the window mirrors its controls.
void RegisterHandler(const std::string& name, std::function<void()> run, std::function<bool()> enabled = {},
                     std::function<bool()> checked = {});
void UnregisterHandler(const std::string& name);
void ClearHandlers();
bool HandlerRegistered(const std::string& name);
// Registered, and its enabled test (if any) passes.
bool HandlerEnabled(const std::string& name);
bool HandlerChecked(const std::string& name);
// Runs the handler of a menu name; false when none is registered.
bool RunHandler(const std::string& name);

// Runs the handler of a command name ("Edit-Copy"); an unknown name, or one
// whose handler is not there yet, does nothing and gives false.
bool DoCommand(const std::string& command);

// The handlers of the main window that live in the core: files, edit, view,
// tools, help. The window adds its own (Exit).
void RegisterFrameCommands();
// Every Register...Commands() of the program; the window and the tests call it.
void RegisterAllCommands();

// ---- commands of the main window that need the canvas or the desktop --------------

// The canvas as a 24-bit picture, its width made 2 pixels narrower when a row
// of 3-byte pixels is not a multiple of four bytes.
Image CaptureCanvasBitmap();
// A 24-bit uncompressed bitmap file (rows bottom-up, each padded to four
// bytes). The reader takes the same form (and top-down rows); false for
// anything else.
bool WriteBitmapFile(const std::string& path, const Image& image);
bool ReadBitmapFile(const std::string& path, Image& image);

void mnuEditCopyAs_Click();
void mnuDrawHideSel_Click();
void mnuDisShowAll_Click();
void mnuHelpCon_Click();
void mnuHelpHome_Click();
void mnuHelpCus_Click();
void mnuHelpVideo_Click();
void mnuHelpTwitter_Click();
void mnuHelpAbout_Click();

}  // namespace vt
