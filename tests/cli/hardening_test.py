#!/usr/bin/env python3
"""Reads the headers of finished programs and names what protects none of them.

Usage: hardening_test.py PROGRAM...
"""
import struct
import sys


def unpack(form, data, at):
    return struct.unpack_from("<" + form, data, at)


def faults_of_elf(data):
    kind, machine = unpack("HH", data, 16)
    table, = unpack("Q", data, 32)
    size, count = unpack("HH", data, 54)
    segments = {}
    for i in range(count):
        type_, flags, offset, _, _, length = unpack("IIQQQQ", data, table + i * size)
        segments[type_] = (flags, offset, length)
    dynamic = {}
    _, offset, length = segments[2]
    for at in range(offset, offset + length, 16):
        tag, value = unpack("QQ", data, at)
        dynamic[tag] = value
    if kind != 3 or not dynamic.get(0x6FFFFFFB, 0) & 0x08000000:
        yield "is loaded at a fixed address"
    if 0x6474E552 not in segments:
        yield "no table is made read-only"
    if not dynamic.get(30, 0) & 8 and not dynamic.get(0x6FFFFFFB, 0) & 1:
        yield "tables stay writable for late binding"
    if segments.get(0x6474E551, (1,))[0] & 1:
        yield "the stack can be executed"
    if b"\0__stack_chk_fail\0" not in data:
        yield "no guards on the stack"
    if machine == 62 and data.count(b"\xf3\x0f\x1e\xfa") < 1000:
        yield "jumps may go anywhere"


def faults_of_pe(data):
    header, = unpack("I", data, 0x3C)
    sections, = unpack("H", data, header + 6)
    size, flags = unpack("HH", data, header + 20)
    characteristics, = unpack("H", data, header + 24 + 70)
    for bit, fault in ((0x20, "addresses of 32 bits"), (0x40, "is loaded at a fixed address"),
                       (0x100, "data can be executed")):
        if not characteristics & bit:
            yield fault
    names = [data[at:at + 8].rstrip(b"\0") for at in
             range(header + 24 + size, header + 24 + size + 40 * sections, 40)]
    if flags & 1 or b".reloc" not in names:
        yield "cannot be loaded elsewhere than at its own address"


def main():
    found = 0
    for name in sys.argv[1:]:
        with open(name, "rb") as file:
            data = file.read()
        for fault in faults_of_elf(data) if data.startswith(b"\x7fELF") else faults_of_pe(data):
            print(f"{name}: {fault}")
            found = 1
    sys.exit(found or len(sys.argv) < 2)


main()
