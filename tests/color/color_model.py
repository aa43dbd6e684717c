# What a PDF asks for: functions and colour spaces evaluated by their definitions (PDF Reference 3.9 and 4.5).
import itertools
import math

import numpy

from pdf_values import Name

DEVICE = {"DeviceGray": 1, "DeviceRGB": 3, "DeviceCMYK": 4}
CIE = {"CalGray": 1, "CalRGB": 3, "Lab": 3}


def limit(value, low, high):
    return min(max(value, low), high)


def pairs(numbers):
    return list(zip(numbers[::2], numbers[1::2]))


def onto(value, source, target):
    (low, high), (to_low, to_high) = source, target
    return to_low if high == low else to_low + (value - low) * (to_high - to_low) / (high - low)


class Calculator:
    """A type 4 function's operators, as far as the templates use them."""

    BINARY = {
        "add": lambda a, b: a + b, "sub": lambda a, b: a - b, "mul": lambda a, b: a * b, "div": lambda a, b: a / b,
        "exp": lambda a, b: a**b, "idiv": lambda a, b: int(a / b), "mod": math.fmod,
        "gt": lambda a, b: a > b, "lt": lambda a, b: a < b, "ge": lambda a, b: a >= b, "le": lambda a, b: a <= b,
        "eq": lambda a, b: a == b, "ne": lambda a, b: a != b,
    }
    UNARY = {
        "neg": lambda a: -a, "abs": abs, "sqrt": math.sqrt, "floor": math.floor, "ceiling": math.ceil,
        "round": lambda a: math.floor(a + 0.5), "truncate": math.trunc, "cvi": int, "cvr": float,
        "sin": lambda a: math.sin(math.radians(a)), "cos": lambda a: math.cos(math.radians(a)),
        "ln": math.log, "log": math.log10, "not": lambda a: not a,
    }

    def __init__(self, text):
        self.words = text.replace("{", " { ").replace("}", " } ").split()

    def body(self, words):
        """Takes words up to the closing brace; procedures become lists."""
        found = []
        while words:
            word = words.pop(0)
            if word == "}":
                break
            found.append(self.body(words) if word == "{" else word)
        return found

    def __call__(self, inputs):
        stack = list(inputs)
        self.run(self.body(self.words[1:]), stack)
        return stack

    def run(self, program, stack):
        for at, word in enumerate(program):
            if isinstance(word, list):
                continue  # an operand of the if or ifelse behind it
            if word == "if":
                if stack.pop():
                    self.run(program[at - 1], stack)
            elif word == "ifelse":
                self.run(program[at - 2 if stack.pop() else at - 1], stack)
            else:
                self.step(word, stack)

    def step(self, word, stack):
        if word in self.BINARY:
            second, first = stack.pop(), stack.pop()
            stack.append(self.BINARY[word](first, second))
        elif word in self.UNARY:
            stack.append(self.UNARY[word](stack.pop()))
        elif word == "pop":
            stack.pop()
        elif word == "dup":
            stack.append(stack[-1])
        elif word == "exch":
            stack[-2:] = stack[:-3:-1]
        elif word == "index":
            stack.append(stack[-1 - int(stack.pop())])
        elif word == "copy":
            count = int(stack.pop())
            stack.extend(stack[len(stack) - count:])
        elif word == "roll":
            turns, count = int(stack.pop()), int(stack.pop())
            piece = stack[len(stack) - count:]
            stack[len(stack) - count:] = [piece[(at - turns) % count] for at in range(count)]
        else:
            stack.append(float(word))


class Model:
    """Evaluates the functions and spaces of one template's objects."""

    def __init__(self, objects):
        self.objects = objects

    def get(self, dictionary, key, default=None):
        return self.objects.resolve(dictionary.get(key, default))

    # Functions

    def evaluate(self, function, inputs):
        function = self.objects.resolve(function)
        domain = pairs(self.get(function, "Domain"))
        inputs = [limit(value, *ends) for value, ends in zip(inputs, domain, strict=True)]
        kinds = {0: self.sampled, 2: self.exponential, 3: self.stitched, 4: self.calculated}
        outputs = kinds[int(function["FunctionType"])](function, inputs, domain)
        if "Range" in function:
            outputs = [limit(value, *ends) for value, ends in zip(outputs, pairs(self.get(function, "Range")),
                                                                  strict=True)]
        return outputs

    def exponential(self, function, inputs, _):
        first, last = self.get(function, "C0", [0.0]), self.get(function, "C1", [1.0])
        power = inputs[0] ** function["N"]
        return [a + power * (b - a) for a, b in zip(first, last, strict=True)]

    def stitched(self, function, inputs, domain):
        bounds = self.get(function, "Bounds")
        at = sum(inputs[0] >= bound for bound in bounds)
        ends = [domain[0][0], *bounds, domain[0][1]]
        inner = onto(inputs[0], (ends[at], ends[at + 1]), pairs(self.get(function, "Encode"))[at])
        return self.evaluate(self.get(function, "Functions")[at], [inner])

    def calculated(self, function, inputs, _):
        return Calculator(function["data"].decode("latin-1"))(inputs)

    def sampled(self, function, inputs, domain):
        size = [int(count) for count in self.get(function, "Size")]
        encode = pairs(self.get(function, "Encode", [end for count in size for end in (0.0, count - 1)]))
        ranges = pairs(self.get(function, "Range"))
        places = [limit(onto(value, ends, into), 0, count - 1)
                  for value, ends, into, count in zip(inputs, domain, encode, size)]
        outputs = numpy.zeros(len(ranges))
        for corner in itertools.product((0, 1), repeat=len(size)):
            weight, index, stride = 1.0, 0, 1
            for place, step, count in zip(places, corner, size):
                whole = min(int(place), max(count - 2, 0))
                weight *= place - whole if step else 1 - (place - whole)
                index += stride * min(whole + step, count - 1)
                stride *= count
            outputs += weight * self.samples(function, index, len(ranges))
        top = 2 ** int(function["BitsPerSample"]) - 1
        decode = pairs(self.get(function, "Decode", [end for ends in ranges for end in ends]))
        return [onto(value, (0, top), ends) for value, ends in zip(outputs, decode)]

    @staticmethod
    def samples(function, index, count):
        bits = int(function["BitsPerSample"])
        data = function["data"]
        number, length = int.from_bytes(data, "big"), 8 * len(data)
        return numpy.array([float(number >> (length - bits * (index * count + at + 1)) & (1 << bits) - 1)
                            for at in range(count)])

    # Colour spaces

    def family(self, space):
        space = self.objects.resolve(space)
        return space if isinstance(space, Name) else self.objects.resolve(space[0])

    def components(self, space):
        family = self.family(space)
        space = self.objects.resolve(space)
        if family == "ICCBased":
            return int(self.objects.resolve(space[1])["N"])
        if family == "DeviceN":
            return len(self.objects.resolve(space[1]))
        return {**DEVICE, **CIE}.get(family, 1)

    def ranges(self, space):
        """The range of each component, which is what the samples of an image or of a table are spread over."""
        if self.family(space) == "Lab":
            given = self.get(self.objects.resolve(self.objects.resolve(space)[1]), "Range", [-100, 100, -100, 100])
            return [(0, 100), *pairs(given)]
        if self.family(space) == "ICCBased":
            alternate = self.objects.resolve(self.objects.resolve(space)[1]).get("Alternate")
            return self.ranges(alternate) if alternate else [(0, 1)] * self.components(space)
        return [(0, 1)] * self.components(space)

    def ask(self, space, values):
        """The device or CIE-based space, and the values in it, that a colour stands for on a device without inks."""
        space = self.objects.resolve(space)
        family = self.family(space)
        if family in DEVICE:
            return Name(family), [limit(value, 0, 1) for value in values]
        if family in CIE:
            return space, [limit(value, *ends) for value, ends in zip(values, self.ranges(space), strict=True)]
        return getattr(self, "ask_" + family.lower())(space, values)

    def ask_iccbased(self, space, values):
        profile = self.objects.resolve(space[1])
        plain = {1: "DeviceGray", 3: "DeviceRGB", 4: "DeviceCMYK"}
        return self.ask(profile.get("Alternate", Name(plain[int(profile["N"])])), values)

    def ask_indexed(self, space, values):
        base, count = space[1], self.components(space[1])
        at = count * int(limit(math.floor(values[0] + 0.5), 0, space[2]))
        entry = self.objects.resolve(space[3])["data"][at:at + count]
        return self.ask(base, [onto(byte, (0, 255), ends) for byte, ends in zip(entry, self.ranges(base), strict=True)])

    def ask_separation(self, space, values):
        return self.ask(space[2], self.evaluate(space[3], values))

    ask_devicen = ask_separation


# CIE-based colours in sRGB, the white point adapted to the display's (Bradford), as a device without a gamut of its
# own would show them.

DISPLAY_WHITE = numpy.array([0.9505, 1.0, 1.0890])
TO_DISPLAY = numpy.linalg.inv(numpy.array([[0.4124, 0.3576, 0.1805], [0.2126, 0.7152, 0.0722],
                                           [0.0193, 0.1192, 0.9505]]))
BRADFORD = numpy.array([[0.8951, 0.2664, -0.1614], [-0.7502, 1.7135, 0.0367], [0.0389, -0.0685, 1.0296]])


def tristimulus(space, values):
    """X, Y and Z of a colour in a CalGray, CalRGB or Lab space."""
    entries = space[1]
    white = numpy.array(entries["WhitePoint"])
    if space[0] == "CalGray":
        return white * values[0] ** entries.get("Gamma", 1.0)
    if space[0] == "CalRGB":
        gammas, matrix = entries.get("Gamma", [1.0] * 3), entries.get("Matrix", [1, 0, 0, 0, 1, 0, 0, 0, 1])
        linear = numpy.array([value**gamma for value, gamma in zip(values, gammas)])
        return numpy.array(matrix).reshape(3, 3).T @ linear
    middle = (values[0] + 16) / 116
    stages = numpy.array([middle + values[1] / 500, middle, middle - values[2] / 200])
    return white * numpy.where(stages >= 6 / 29, stages**3, 108 / 841 * (stages - 4 / 29))


def linear_display(space, values):
    scale = (BRADFORD @ DISPLAY_WHITE) / (BRADFORD @ numpy.array(space[1]["WhitePoint"]))
    adapted = numpy.linalg.inv(BRADFORD) @ (scale * (BRADFORD @ tristimulus(space, values)))
    return TO_DISPLAY @ adapted


def in_gamut(space, values, border):
    """Is a colour within the display's gamut, so far from its border?"""
    linear = linear_display(space, values)
    return bool((linear >= border).all() and (linear <= 1 - border).all())


def display_bytes(space, values):
    linear = linear_display(space, values).clip(0, 1)
    return 255 * numpy.where(linear <= 0.0031308, 12.92 * linear, 1.055 * linear ** (1 / 2.4) - 0.055)
