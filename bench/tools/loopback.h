#pragma once

/**
 * From now on sockets of this program that would listen on all interfaces listen on the loopback
 * interface only. Qt's VNC platform asks for all of them, and has no option for less.
 */
void listenOnLoopbackOnly();
