"""The grid under the hand: edited, filled, emptied and scrolled by real keys and clicks."""

from driver.story import Story

ROWS = (
    "Pot\tamber\t3\tFalse\tpot.png\tfilled in by the host\n"
    "Torch\tgreen\t3\tFalse\tlamp.png\t"
    "a long note that goes on far beyond the end of its cell, to be read in the tool tip\n"
    "Чайник\tblue\t2\tTrue\tchainik.png\tnon-Latin text\n"
    "茶壺\tgreen\t1\tFalse\t\tline\nbreak and\ttab\n"
    "إبريق شاي\tred\t3\tTrue\t\tfrom right to left\n"
    "Mug \U0001F375\tamber\t1\tTrue\tmug.png\ta colour that is no choice\n"
    "Tray\t\t0\tFalse\ttray.png\t\n"
    "Spoon\tgreen\t1\tTrue\tspoon.png\tNULL\n"
    "Cup\t\t\t\t\t\n"
    "16\t256\tsixteen\n"
)


class GalleryStory(Story):
    def test_a_grid_is_edited_filled_emptied_and_scrolled(self):
        gallery = self.start_gallery("--dump")
        grid = gallery.grid("All kinds of columns")
        self.assertEqual(9, grid.row_count())
        self._edit_every_kind(grid)
        self._undo_and_walk(grid)
        self._add_and_drop(grid)
        grid.click(1, 0)
        gallery.press("Delete row")
        grid.await_row_count(9)
        self._scroll_and_edit(gallery.grid("The longest list"))
        self.assertEqual(0, gallery.close())
        self.assertEqual(ROWS, gallery.process.log())

    def _edit_every_kind(self, grid):
        keys = self.desktop
        grid.click(0, 0)
        keys.type("Pot")
        keys.press("Return")
        grid.await_cell(0, 1)
        keys.type("amber")
        keys.press("Return")
        grid.await_cell(0, 2)
        keys.press("Down", "Tab")
        grid.await_cell(0, 3)
        keys.press("space", "Tab")
        grid.await_cell(0, 4)
        keys.type("pot.png")
        keys.press("Tab")
        grid.await_cell(0, 5)
        keys.press("F4", "Tab")
        grid.await_cell(1, 0)
        grid.await_text(0, 0, "Pot")

    def _undo_and_walk(self, grid):
        keys = self.desktop
        keys.press("Down")
        grid.await_cell(2, 0)
        keys.type("Candle")
        keys.press("Escape")
        keys.type("Torch")
        keys.press("Up")
        grid.await_cell(1, 0)
        grid.await_text(2, 0, "Torch")

    def _add_and_drop(self, grid):
        keys = self.desktop
        grid.click_under(8)
        grid.await_cell(9, 0)
        keys.type("Cup")
        keys.press("Return")
        grid.await_cell(9, 1)
        grid.click(0, 0)
        grid.click_under(9)
        grid.await_cell(10, 0)
        keys.press("Escape")
        grid.await_row_count(10)

    def _scroll_and_edit(self, grid):
        grid.wheel_down(5)
        grid.await_top(15)
        grid.click(15, 2)
        self.desktop.type("sixteen")
        self.desktop.press("Tab")
        grid.await_cell(16, 0)
