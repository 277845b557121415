#pragma once

#include <QString>
#include <QStringList>

// Keeps the token of the command line from staying where others can read it.
namespace LaunchSecret {

// From here until release() the process leaves no core file, and other processes of the same user cannot read
// its memory. A process that a debugger has started stays open to it.
void guard();
void release();

// Overwrites the text in the memory that it shares with its copies, which read the same afterwards.
void blotOut(const QString& secret);

// Overwrites the value of every "--token": in these texts, and in the arguments that the process was started
// with, which is what the system shows as its command line.
void blotOutTokens(const QStringList& arguments, int argc, char** argv);

} // namespace LaunchSecret
