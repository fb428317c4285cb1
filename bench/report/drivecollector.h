#pragma once

#include "report/drivereport.h"

class PictureTrail;
class Rig;

/** Reads a report from a session that keeps a journal. */
DriveReport reportOn(Rig *rig, const PictureTrail &trail);
