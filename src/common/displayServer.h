#pragma once

/// The server that draws on the screen what a program sends it.
namespace displayServer {

/// Returns when the server has drawn all that was sent, so that the moment is that of the picture
/// and not of the sending. Without an X server it returns at once.
void awaitDrawn();

} // namespace displayServer
