// The initialization file zemok.ini: looked for in the current folder, in
// c:\zemok\ and in $HOME/Zemok/, read once before the title.
#pragma once

// Channel of the initialization file while it is read.
constexpr int kIniChannel = 10;

// Looks for zemok.ini and reads its 14 keys into sysinf, the channel table,
// hpName and commentChars.  A missing file is one warning; a key without a
// usable value is reported and the field keeps its value; a line whose key
// is none of the 14 is reported and skipped.
void readInitializationFile();
