#pragma once

class Screen;

/**
 * Delivers what is under way, ends the animations and returns scrolling texts to their start, so
 * that pictures of one state are the same on every machine.
 */
void holdStill(const Screen *screen);
