"""Loads a plug-in library as Xojo does and formats a number with it: example.py LIBRARY

This program replaces the development host, which does not run on older systems. It requires only Python, and it offers
only the services that the example uses.
"""
import ctypes
import os
import sys

POINTER, INTEGER, WORD = ctypes.c_void_p, ctypes.c_int64, ctypes.c_uint32
UTF8 = 0x08000100
strings = {}  # the host's strings, by address
services = {}  # kept alive, because the library calls them
methods = {}  # native functions, by declaration


class Method(ctypes.Structure):
    _fields_ = [("function", POINTER), ("setter", POINTER), ("declaration", ctypes.c_char_p), ("rest", POINTER * 3)]


class Module(ctypes.Structure):
    _fields_ = [("version", WORD), ("name", ctypes.c_char_p), ("methods", ctypes.POINTER(Method)), ("count", INTEGER)]


def offer(name, result, *arguments):
    def keep(function):
        services[name] = ctypes.CFUNCTYPE(result, *arguments)(function)
        return function
    return keep


@offer("REALGetRBVersion", ctypes.c_double)
def version():
    return 2024.03


@offer("RegisterPluginVersion", None, WORD)
def register_version(_level):
    pass


@offer("PluginRegisterModule", None, ctypes.POINTER(Module))
def register_module(module):
    for method in module.contents.methods[: module.contents.count]:
        methods[method.declaration.decode()] = method.function


@offer("REALBuildStringWithEncoding", POINTER, POINTER, INTEGER, WORD)
def build_string(data, size, _encoding):
    string = ctypes.create_string_buffer(ctypes.string_at(data, size))
    strings[ctypes.addressof(string)] = string
    return ctypes.addressof(string)


@offer("REALGetStringEncoding", WORD, POINTER)
def encoding(_string):
    return UTF8


@offer("LenB", INTEGER, POINTER)
def byte_count(string):
    return len(strings[string].value)


@offer("REALLoadGlobalMethod", POINTER, POINTER, ctypes.c_char_p)
def load_global_method(_nothing, declaration):
    return address_of(declaration.decode().split("(")[0])


@offer("StringGetCString", POINTER, POINTER)
def string_bytes(string):
    return string


def address_of(name):
    service = services.get(name)
    return ctypes.cast(service, POINTER).value if service else None


@ctypes.CFUNCTYPE(POINTER, ctypes.c_char_p)
def resolve(name):
    return address_of(name.decode())


library = ctypes.CDLL(sys.argv[1])
library.REALPluginMain(resolve)
declaration = next(text for text in methods if text.startswith("FormatZKT("))
text = b"%.2f kg"
form = build_string(ctypes.cast(ctypes.c_char_p(text), POINTER), len(text), UTF8)
format_number = ctypes.CFUNCTYPE(POINTER, POINTER, ctypes.c_double, POINTER)(methods[declaration])
print("glibc", os.confstr("CS_GNU_LIBC_VERSION").split()[1] + ":", len(methods), "methods;", strings[format_number(form, 1234.5, None)].value.decode())
