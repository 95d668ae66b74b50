#pragma once

#include <QString>

// Where the player's socket lies. Whoever can enter that folder can talk to the player and would
// receive every song path, so it must be ours and closed to everybody else: $XDG_RUNTIME_DIR, or
// when that is unset (or not private), a folder of our own under the temporary folder, created 0700.
namespace SocketFolder {

enum class Verdict {
    Private,      // a directory of ours that nobody else may enter
    Missing,      // nothing there
    NotDirectory, // a file or a symbolic link: never followed
    NotOurs,      // another user's
    OpenToOthers, // group or others have some right on it
};

// Looks at the folder itself (a symbolic link is not followed).
Verdict check(const QString& folder);
// Creates the folder 0700 when it is missing, then checks what is there.
Verdict makePrivate(const QString& folder);
// The fallback folder: <temp>/tavomp3-<uid>.
QString fallbackFolder();
// The folder to use, or an empty string when none is private; refusal then holds the German text
// for the status line.
QString choose(QString* refusal = nullptr);
// The refusal text for a folder and its verdict.
QString refusalText(const QString& folder, Verdict verdict);

} // namespace SocketFolder
