#pragma once

/**
 * Linked into a program, this keeps all of its sockets that would listen on the loopback interface:
 * nothing but this machine reaches it. Qt's VNC platform asks for all interfaces, and has no option
 * for less. There is nothing to call.
 */
