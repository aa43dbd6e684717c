# Damages files on purpose, the same way each time: what a variant looks like depends on its seed alone.
import random
import re

NUMBERS = (b"0", b"-1", b"1", b"255", b"256", b"32767", b"65535", b"65536", b"1048576", b"2147483647", b"2147483648",
           b"-2147483648", b"4294967295", b"4294967296", b"1e9", b"." + b"9" * 40)
STRUCTURE = b"<>[](){}/%#\\ 0\x00\xff\n"
SIZES = (1, 2, 7, 20, 256, 4096)
NUMBER = re.compile(rb"(?<![\w.])\d{1,10}(?![\w.])")
NAME = re.compile(rb"/\w+")
OBJECT = re.compile(rb"\d+ 0 obj\b.*?\bendobj\b", re.DOTALL)


def replaced(data, match, new):
    return data[: match.start()] + new + data[match.end() :]


def truncate(rng, data):
    return data[: rng.randrange(len(data))]


def flip_bits(rng, data):
    damaged = bytearray(data)
    for _ in range(rng.choice((1, 2, 8, 64))):
        damaged[rng.randrange(len(damaged))] ^= 1 << rng.randrange(8)
    return bytes(damaged)


def put_structure(rng, data):
    damaged = bytearray(data)
    for _ in range(rng.choice((1, 2, 8))):
        damaged[rng.randrange(len(damaged))] = rng.choice(STRUCTURE)
    return bytes(damaged)


def remove(rng, data):
    at = rng.randrange(len(data))
    return data[:at] + data[at + rng.choice(SIZES) :]


def repeat(rng, data):
    at = rng.randrange(len(data))
    return data[:at] + data[at : at + rng.choice(SIZES)] * rng.choice((1, 2, 50)) + data[at:]


def change_number(rng, data):
    numbers = list(NUMBER.finditer(data))
    return replaced(data, rng.choice(numbers), rng.choice(NUMBERS)) if numbers else data


def retarget(rng, data):
    """Lets a number be one that the file has elsewhere: references, lengths, offsets."""
    numbers = list(NUMBER.finditer(data))
    return replaced(data, rng.choice(numbers), rng.choice(numbers).group()) if numbers else data


def change_name(rng, data):
    names = list(NAME.finditer(data))
    return replaced(data, rng.choice(names), rng.choice(names).group()) if names else data


def swap_objects(rng, data):
    """Puts the body of one object into another's place. Where lengths differ, the offsets behind are wrong too."""
    objects = list(OBJECT.finditer(data))
    return replaced(data, rng.choice(objects), rng.choice(objects).group()) if objects else data


WAYS = (truncate, flip_bits, put_structure, remove, repeat, change_number, retarget, change_name, swap_objects)


def damage(data, seed):
    """One to three kinds of damage after each other."""
    rng = random.Random(seed)
    for way in rng.choices(WAYS, k=rng.choice((1, 1, 2, 3))):
        data = way(rng, data) or b"%PDF-"
    return data
