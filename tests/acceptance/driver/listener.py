"""A port where something listens that is no SQL Server."""

import socket
import threading

SILENT = None


class Listener:
    """Greets whoever connects with some bytes and hangs up; with none it hangs up at once. One
    that is SILENT hears its clients out and never says a word."""

    def __init__(self, greeting):
        self.greeting = greeting
        self.heard = threading.Event()  # set once a client has said something
        self.socket = socket.create_server(("127.0.0.1", 0))
        self.port = self.socket.getsockname()[1]
        self.thread = threading.Thread(target=self._serve, daemon=True)
        self.thread.start()

    def end(self):
        # Closing alone would leave the thread in its call.
        self.socket.shutdown(socket.SHUT_RDWR)
        self.socket.close()
        self.thread.join(5)

    def _serve(self):
        while True:
            try:
                peer, _ = self.socket.accept()
            except OSError:
                return
            with peer:
                try:
                    self._talk(peer)
                except OSError:
                    continue

    def _talk(self, peer):
        if self.greeting is SILENT:
            while peer.recv(4096):
                self.heard.set()
        elif self.greeting:
            peer.recv(4096)
            peer.sendall(self.greeting)
