"""A port that hands everything on to a server and keeps what its clients asked of it."""

import re
import socket
import threading

# The packets of a TDS client, by their type byte ([MS-TDS], "Packet Header").
BATCH, CALL, ATTENTION, TRANSACTION, LOGIN, PRELOGIN = 0x01, 0x03, 0x06, 0x0E, 0x10, 0x12
TELLS_STATEMENTS = {BATCH: "batch", CALL: "call", TRANSACTION: "transaction"}
TELLS_NOTHING = (ATTENTION, LOGIN, PRELOGIN)
HEADER = 8  # bytes
END_OF_MESSAGE = 0x01

WORDS = "insert|update|delete|merge|create|alter|drop|truncate|into"
WRITES = {
    "batch": re.compile(rf"\b({WORDS})\b", re.I),
    # What is no text reads as letters beside the text, so that no word has an end there.
    "call": re.compile(WORDS, re.I),
}


class Recorder:
    """Listens on a port of its own. Its statements are (kind, text) in the order in which they
    came; what cannot be read stands among them as "unreadable"."""

    def __init__(self, host, port):
        self.target = (host, int(port))
        self.socket = socket.create_server(("127.0.0.1", 0))
        self.host, self.port = self.socket.getsockname()
        self._lock = threading.Lock()
        self._heard = []
        self._ends = []
        self.threads = [threading.Thread(target=self._accept, daemon=True)]
        self.threads[0].start()

    def statements(self):
        with self._lock:
            return list(self._heard)

    def batches(self):
        return [text for kind, text in self.statements() if kind == "batch"]

    def writes(self):
        """The statements that could change something, and those that nobody can read."""
        return [(kind, text) for kind, text in self.statements()
                if kind not in WRITES or WRITES[kind].search(text)]

    def end(self):
        # Closing alone would leave the threads in their calls.
        for end in (self.socket, *self._ends):
            try:
                end.shutdown(socket.SHUT_RDWR)
            except OSError:
                pass  # the other side was faster
            end.close()
        for thread in self.threads:
            thread.join(5)

    def _accept(self):
        while True:
            try:
                client, _ = self.socket.accept()
            except OSError:
                return
            try:
                server = socket.create_connection(self.target)
            except OSError:
                client.close()  # there is no server any more
                continue
            self._ends += [client, server]
            messages = Messages(self._hear)
            for source, sink, tap in ((client, server, messages.take),
                                      (server, client, lambda piece: None)):
                thread = threading.Thread(target=self._hand_on, args=(source, sink, tap),
                                          daemon=True)
                self.threads.append(thread)
                thread.start()

    def _hand_on(self, source, sink, tap):
        """The tap hears each piece before the server does: a statement is recorded when its answer
        comes."""
        try:
            while piece := source.recv(65536):
                tap(piece)
                sink.sendall(piece)
        except OSError:
            pass
        try:
            sink.shutdown(socket.SHUT_WR)
        except OSError:
            pass

    def _hear(self, kind, text):
        with self._lock:
            self._heard.append((kind, text))


class Messages:
    """Puts a client's packets together and tells each message that holds statements."""

    def __init__(self, tell):
        self.tell = tell
        self.rest = b""
        self.body = b""

    def take(self, piece):
        self.rest += piece
        while len(self.rest) >= HEADER:
            length = int.from_bytes(self.rest[2:4], "big")
            if length < HEADER:
                self.tell("unreadable", self.rest.hex())
                self.rest = b""
                return
            if len(self.rest) < length:
                return
            packet, self.rest = self.rest[:length], self.rest[length:]
            self.body += packet[HEADER:]
            if packet[1] & END_OF_MESSAGE:
                message, self.body = self.body, b""
                self._tell(packet[0], message)

    def _tell(self, kind, message):
        if kind in TELLS_STATEMENTS:
            self.tell(TELLS_STATEMENTS[kind], text_of(kind, message))
        elif kind not in TELLS_NOTHING:
            self.tell("unreadable", message.hex())


def text_of(kind, message):
    """The text of a message behind its headers; of a call, whatever reads as text at all."""
    body = message[int.from_bytes(message[:4], "little"):]
    if kind == BATCH:
        return body.decode("utf-16-le")
    return " ".join(body[start:].decode("utf-16-le", "replace") for start in (0, 1))
