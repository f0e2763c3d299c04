// The title, the dialogue-mode question and the passive start, which turns
// a short questionnaire into the command file the monitor then reads.
#pragma once

// Restarts the CPU timer, shows the title pages and the banner when the
// program has no keys, and asks "Dialogue mode" unless a key of the letter
// C was given or the title pages were left with "E".  A reply beginning
// with PASS starts the passive questionnaire; its command file is opened on
// the storage channel and becomes the command source.  false: that file
// could not be opened or written, and the monitor must not start.
bool startDialogue();
