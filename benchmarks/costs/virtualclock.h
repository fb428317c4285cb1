#pragma once

/*
 * The clock of this process: it stands still while something is done and jumps over every wait, so
 * that two runs are alike to the last instruction. It begins at the same moment each time.
 */

/** Handles events for so long, by this clock. */
void passTime(int ms);
