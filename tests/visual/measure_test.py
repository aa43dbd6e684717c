#!/usr/bin/python3
# Tests the visual test's own measure: it forgives what anti-aliasing does and nothing else.
import pathlib
import sys
import unittest

import numpy

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tools"))
import page_compare  # noqa: E402  (found through the line above)


def sheet(*marks):
    """A white picture of 200 x 100 pixels with marks (x, y, width, height, colour)."""
    picture = numpy.full((100, 200, 3), 255, numpy.int16)
    for x, y, width, height, colour in marks:
        picture[y : y + height, x : x + width] = colour
    return picture


BLACK, RED, GREY = (0, 0, 0), (255, 0, 0), (128, 128, 128)
BAR = (20, 20, 100, 40, BLACK)


class Measure(unittest.TestCase):
    def expect(self, same, one, other, tolerance=page_compare.SAME_ENGINE):
        self.assertEqual(same, page_compare.differences(one, other, tolerance) == "")

    def test_takes_a_picture_for_itself(self):
        self.expect(True, sheet(BAR), sheet(BAR))

    def test_forgives_an_edge_of_half_ink(self):
        self.expect(True, sheet((19, 19, 102, 42, GREY), BAR), sheet(BAR))

    def test_forgives_one_pixel_of_place(self):
        self.expect(True, sheet((21, 21, 100, 40, BLACK)), sheet(BAR))

    def test_sees_three_pixels_of_place(self):
        self.expect(False, sheet((23, 20, 100, 40, BLACK)), sheet(BAR))

    def test_sees_a_missing_and_an_additional_mark(self):
        dot = (150, 70, 8, 8, BLACK)
        self.expect(False, sheet(BAR), sheet(BAR, dot))
        self.expect(False, sheet(BAR, dot), sheet(BAR))

    def test_sees_another_hue(self):
        self.expect(False, sheet(BAR), sheet((*BAR[:4], RED)), page_compare.OTHER_ENGINE)

    def test_sees_a_blank_page(self):
        self.expect(False, sheet(), sheet(BAR))

    def test_takes_two_blank_pages_for_the_same(self):
        self.expect(True, sheet(), sheet())

    def test_sees_another_size(self):
        self.expect(False, sheet(BAR)[:, :150], sheet(BAR))


if __name__ == "__main__":
    unittest.main()
