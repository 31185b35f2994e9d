# SPDX-License-Identifier: Apache-2.0
"""Holds what the command prints for scripts against the schemas that are installed with it.

python3 json_schemas_test.py PELTO SCHEMAS SAMPLES
"""

import json
import pathlib
import struct
import subprocess
import sys
import tempfile

import jsonschema

pelto, schemas, samples = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])


def dds(dxgi, width=4, height=4, levels=1, misc=0, layers=1, pixels=b""):
    """A DX10 file."""
    header = struct.pack("<7I44x", 124, 0x1007, height, width, 0, 0, levels)
    header += struct.pack("<8I", 32, 4, 0x30315844, 0, 0, 0, 0, 0)
    header += struct.pack("<5I", 0x1000, 0, 0, 0, 0)
    return b"DDS " + header + struct.pack("<5I", dxgi, 3, misc, layers, 0) + pixels


def printed(*arguments):
    result = subprocess.run([pelto, *arguments], capture_output=True, check=False)
    return json.loads(result.stdout)


def refused(schema, document):
    return not jsonschema.Draft201909Validator(schema).is_valid(document)


with tempfile.TemporaryDirectory() as name:
    folder = pathlib.Path(name)
    files = sorted(str(path) for path in samples.iterdir() if path.suffix in (".dds", ".basis"))
    for other, data in {
        "array.dds": dds(98, layers=3, pixels=bytes(48)),
        "cube.dds": dds(98, misc=4, pixels=bytes(96)),
        "cut.dds": dds(99, levels=3, pixels=bytes(10)),
        "unknown.dds": dds(300),
        "astc.dds": dds(134, pixels=bytes(16)),
        "lfs.dds": b"version https://git-lfs.github.com/spec/v1\noid sha256:0\nsize 1\n",
        "png.dds": b"\x89PNG\r\n\x1a\n",
        "empty.dds": b"",
    }.items():
        (folder / other).write_bytes(data)
        files.append(str(folder / other))
    files.append(str(folder / "absent.dds"))
    odd = bytes(folder) + b"/\xff.dds"
    with open(odd, "wb") as file:
        file.write(dds(71, pixels=bytes(8)))
    files.append(odd)

    for subcommand, options in (("inspect", []), ("inspect", ["--levels"]), ("check", [])):
        schema = json.loads((schemas / f"{subcommand}.schema.json").read_text())
        jsonschema.Draft201909Validator.check_schema(schema)
        objects = printed(subcommand, "--json", *options, *files)
        assert len(objects) == len(files)
        jsonschema.validate(objects, schema, jsonschema.Draft201909Validator)
        # A schema that takes anything would prove nothing.
        for key in ("path", "notes"):
            assert refused(schema, [{k: v for k, v in objects[0].items() if k != key}]), key
        assert refused(schema, [{**objects[0], "notes": [{"code": "other", "text": "x"}]}])
        assert refused(schema, {})
