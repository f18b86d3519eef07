"""What stood on the screen at one moment, pixel by pixel. Rectangles are (x, y, width, height) on the
screen, as widgets tell them."""

from collections import Counter

BYTES = 3  # red, green and blue of a pixel


class Picture:
    """Reads a binary portable pixmap of the rectangle extents."""

    def __init__(self, path, extents):
        self.extents = extents
        with open(path, "rb") as file:
            self._read(file)

    def part(self, extents):
        """The pixels of a rectangle, to be compared with those of another moment."""
        x, y, width, height = extents
        left = (x - self.extents[0]) * BYTES
        top = y - self.extents[1]
        if left < 0 or top < 0 or left + width * BYTES > self._stride or top + height > self._height:
            raise AssertionError(f"{extents} lies outside the picture of {self.extents}")
        rows = (row * self._stride + left for row in range(top, top + height))
        return b"".join(self._pixels[start:start + width * BYTES] for start in rows)

    def colours(self, extents):
        """How many pixels of a rectangle have which (red, green, blue)."""
        return Counter(zip(*[iter(self.part(extents))] * BYTES))

    def ink(self, extents):
        """How many pixels of a rectangle are not of its ground, which most of them are."""
        colours = self.colours(extents)
        return colours.total() - colours.most_common(1)[0][1]

    def _read(self, file):
        words = []
        while len(words) < 4:
            words += file.readline().split(b"#")[0].split()
        kind, width, self._height, depth = words[0], *map(int, words[1:])
        self._stride = width * BYTES
        self._pixels = file.read()
        if kind != b"P6" or depth != 255 or len(self._pixels) != self._stride * self._height:
            raise AssertionError(f"this is no picture: {words}")
