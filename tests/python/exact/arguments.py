"""Arguments for every operation: as Python takes them, and as the C function does."""

import sys

from bsp_pon import records
from recording import ROOT, ffi

sys.path.insert(0, str(ROOT / "catalog"))
from generator.catalogue import Catalogue  # noqa: E402
from generator.checkout import Checkout  # noqa: E402

catalogue = Catalogue(Checkout(ROOT))
OPERATIONS = catalogue.operations()
BLOCK = 37  # bytes of a block that may have any length


def pattern(size, start=1):
    """Returns bytes of which no two neighbours are equal, and none is zero."""
    return bytes(1 + (start + 7 * index) % 251 for index in range(size))


class Arguments:
    """The arguments of one operation, and what it delivered after the calls."""

    def __init__(self, operation):
        self.operation = operation
        self.python, self.c, self.outputs, self.keep = [], [], [], []
        for index, argument in enumerate(operation.args.values()):
            getattr(self, "add_" + argument.type.replace("-", "_"))(argument, index)

    def lend(self, ctype, content):
        place = ffi.new(ctype, content)
        self.keep.append(place)
        self.c.append(place)
        return place

    def size_of(self, argument):
        return argument.size or BLOCK

    def add_u32(self, argument, index):
        number = 0x01020304 + 0x11111111 * index
        self.number(number)

    def add_u16(self, argument, index):
        self.number(0xC1D2 + 0x1101 * index)

    def add_u8(self, argument, index):
        self.number(0xC1 + index)

    def number(self, number):
        self.python.append(number)
        self.c.append(number)

    def add_mac(self, argument, index):
        self.python.append(b"\xe2\xe4\xe6\xe9\xeb\xed")
        self.lend("uint8_t[]", self.python[-1])

    def add_text(self, argument, index):
        self.python.append(f"this is {argument.name}")
        self.lend("char[]", self.python[-1].encode())

    def add_block(self, argument, index):
        self.python.append(pattern(self.size_of(argument), index))
        self.lend("uint8_t[]", self.python[-1])

    def add_length(self, argument, index):
        if argument.of.type == "block-out":
            self.python.append(BLOCK)
        self.c.append(BLOCK)

    def add_length_at(self, argument, index):
        self.python.append(BLOCK)
        self.lend("uint32_t *", BLOCK)

    def add_record(self, argument, index):
        record = getattr(records, self.operation.record.name)
        content = pattern(record.SIZE, index)
        self.python.append(record.from_bytes(content))
        place = self.lend(record.C_NAME + " *", None)
        ffi.memmove(place, content, len(content))
        self.record = (self.python[-1], place)

    def add_db(self, argument, index):
        if argument.dropped:
            self.c.append(ffi.NULL)
            return
        place = self.lend("db_handle **", None)
        self.outputs.append(lambda value: (bool(value), bool(place[0])))

    def add_text_out(self, argument, index):
        place = self.lend("char[]", 8192)
        self.outputs.append(lambda value: (value.encode("utf-8", "surrogateescape"), ffi.string(place)))

    def out(self, ctype, argument):
        place = ffi.new("uint32_t[]", 16)
        self.keep.append(place)
        self.c.append(ffi.cast(ctype, place))
        self.outputs.append(lambda value: (value, ffi.cast(ctype, ffi.cast("uint8_t *", place) + argument.skip)[0]))

    def add_u8_out(self, argument, index):
        self.out("uint8_t *", argument)

    def add_u16_out(self, argument, index):
        self.out("uint16_t *", argument)

    def add_u32_out(self, argument, index):
        self.out("uint32_t *", argument)

    def add_block_out(self, argument, index):
        place = self.lend("uint8_t[]", 16384)
        size = self.size_of(argument)
        self.outputs.append(lambda value: (value, ffi.buffer(place)[argument.skip:argument.skip + size]))

    def add_block_inout(self, argument, index):
        self.python.append(pattern(self.size_of(argument), index))
        place = self.lend("uint8_t[]", self.python[-1])
        self.outputs.append(lambda value: (value, ffi.buffer(place)[:len(value)]))

    def add_response(self, argument, index):
        place = self.lend("uint8_t[]", 8192)
        self.outputs.append(lambda value: (bytes(value), ffi.buffer(place)[:len(bytes(value))]))

    def add_pblock_out(self, argument, index):
        place = self.lend("void **", None)
        self.outputs.append(lambda value: (value.read(8), ffi.buffer(place[0], 8)[:]))
