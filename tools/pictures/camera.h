#pragma once

#include <QString>
#include <QWidget>

#include <functional>

/// Takes the manual's pictures of the windows of the workstation that runs in this process. Its calls are for
/// the thread of the scene, beside the window's: a dialog there waits for its operator, who is the scene.
namespace Camera
{
/// Does it in the window's thread and returns when it is done.
void act(const std::function<void()> &action);
/// Has it done there and goes on: for what opens a dialog.
void begin(const std::function<void()> &action);
/// Waits until it is so, looked at in the window's thread. Ends the process if it never is.
void await(const char *what, const std::function<bool()> &isSo);
/// Waits for the words in the journal's files.
void awaitJournal(const QString &words);
/// The dialog in front, of that title; waits for it.
QWidget *awaitDialog(const QString &title);
/// Writes the picture, or ends the process if there is nothing to be seen in it.
void take(const QString &name, QWidget *window);
/// Gives the far end a command, a line on its standard input.
void tellFarEnd(const QString &command);
} // namespace Camera
