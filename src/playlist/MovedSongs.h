#pragma once

#include <QStringList>
#include <functional>

class SongIdentities;

// The update's second look at what the merge by path could not carry over: an entry whose file is
// gone from the new list keeps its priority when exactly one of the files new to the list holds
// the same audio, and only one gone entry does. No such file, or more than one gone entry or new
// file with that audio (copies of one song), carries nothing over: a name alone is never enough.
namespace MovedSongs {

// Carries ":" and the digit of such old lines (0 to oldUpper) over to their new lines in `fresh`;
// returns how many songs were recognised as moved. The files new to the list are handed to
// `identities` to be learnt, and the records of gone files that no longer exist are dropped.
// `between` is called now and then, so that a long list lets the window paint.
int carryPriorities(const QStringList& old, qint32 oldUpper, QStringList& fresh, SongIdentities& identities,
                    const std::function<void()>& between = {});

} // namespace MovedSongs
