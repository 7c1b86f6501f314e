#!/usr/bin/python3
"""JSON of every command over hosts of many kinds: valid by the schema, with the facts of the other formats, and changed
only together with its version."""
import csv
import hashlib
import io
import itertools
import json
import unittest
import xml.etree.ElementTree

import jsonschema
import program
from program import run


class Schema(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        schema = json.loads(run("schema").stdout)
        jsonschema.Draft7Validator.check_schema(schema)
        cls.validator = jsonschema.Draft7Validator(schema)
        cls.kinds = {kind: jsonschema.Draft7Validator(definition)
                     for kind, definition in schema["definitions"].items()}

    def check(self, *words, status=0, **more):
        with self.subTest(words=words, **more):
            finished = run(*words, "-o", "json", **more)
            self.assertEqual(finished.returncode, status, finished.stderr)
            self.assertTrue(finished.stdout.isascii())
            answer = json.loads(finished.stdout, parse_constant=self.fail)
            # Record by record, since the whole schema tries each kind on each.
            for record in answer["records"]:
                self.kinds[record["kind"]].validate(record)
            self.validator.validate(dict(answer, records=answer["records"][:2]))
            self.assertEqual(answer["ok"], status in (0, 3))
            return answer

    def test_lab(self):
        kinds = set()
        for words in program.commands():
            kinds |= {record["kind"] for record in self.check(*words)["records"]}
        for name in ("sdb", "50:06:0e:80:12:4a:7c:10", "Adapter_ORV2742_RFH1836M74420"):
            kinds |= {record["kind"] for record in self.check("show", name)["records"]}
        self.assertEqual(kinds, set(self.validator.schema["definitions"]))

    def test_lab_without_optional_functions(self):
        library = program.library_without("VEXAPI_Ext")
        for words in program.commands():
            answer = self.check(*words, library=library)
            self.assertEqual(answer["messages"], [])

    def test_captured_trees(self):
        for words, tree in itertools.product(program.commands(), program.TREES):
            if words[:1] != ["ping"]:
                self.check(*[word.replace(program.NAME, "FC_20:00:02:00:00:00:a0:01") for word in words], tree=tree)

    def test_empty_hosts(self):
        for words in program.commands():
            if program.NAME not in words:
                for adapters in ([], [{"Model": "M"}]):
                    answer = self.check(*words, host=program.host_file("empty", {"Adapters": adapters}))
                    self.assertEqual(len(answer["records"]), len(adapters) if words in (["adapters"], ["names"]) else 0)

    def test_failures(self):
        self.assertEqual(self.check("ports", "nothing", status=1)["messages"],
                         ["nothing is named nothing"])
        self.check("ports", status=1, library="/nonexistent")
        self.check("ports", status=1, host="/nonexistent")
        self.check("--root", "/nonexistent", status=1)
        self.check("ports", "--sort", "nothing", status=2)
        answer = self.check("transceivers", status=3, environment={"VEXAPI_SIM_FAULTS": "VEXAPI_GetSFPData@2=5"})
        self.assertEqual(answer["messages"], [f"{answer['records'][1]['port']}: transceiver: failed with status 5"])
        self.assertEqual([record["health"] for record in answer["records"]].count("unread"), 1)

    def test_ticks_are_lines(self):
        finished = run("counters", "host9", "--interval", "0.1", "--count", "3", "-o", "json")
        answers = [json.loads(line) for line in finished.stdout.splitlines()]
        self.assertEqual(len(answers), 3)
        for answer in answers:
            self.validator.validate(answer)
        self.assertTrue(all(record["increase"] is None for record in answers[0]["records"]))
        self.assertTrue(all(record["increase"] > 0 for record in answers[1]["records"]))

    def test_schema_refuses_what_readers_do_not_know(self):
        answer = self.check("ports", "host9")
        for change in (
                lambda: answer["records"][0].update(more=1),
                lambda: answer["records"][0].update(speed_gbps="32"),
                lambda: answer["records"][0].pop("fabric"),
                lambda: answer["records"][0].update(kind="prot"),
                lambda: answer.update(more=1),
                lambda: answer["tool"].pop("library"),
                lambda: answer.update(json_format_version=[0, 9])):
            answer = json.loads(run("ports", "host9", "-o", "json").stdout)
            change()
            with self.assertRaises(jsonschema.ValidationError):
                self.validator.validate(answer)

    def test_changes_with_its_version(self):
        """A row of the file `versions` for each version, the last one for this schema. Descriptions may change."""
        def shape(value):
            if isinstance(value, dict):
                return {key: shape(part) for key, part in value.items()
                        if key != "description" or isinstance(part, dict)}
            return [shape(part) for part in value] if isinstance(value, list) else value
        schema = self.validator.schema
        version = ".".join(map(str, schema["properties"]["json_format_version"]["const"]))
        digest = hashlib.sha256(json.dumps(shape(schema), sort_keys=True).encode()).hexdigest()[:16]
        rows = [line.split() for line in (program.ROOT / "orfc/writers/versions").read_text().splitlines()
                if not line.startswith("#")]
        self.assertEqual(rows[-1], [version, digest],
                         "append this row, with a version of its own (JSON_FORMAT_VERSION in Json.h)")
        numbers = [tuple(map(int, row[0].split("."))) for row in rows]
        self.assertEqual(numbers, sorted(set(numbers)))


class Facts(unittest.TestCase):
    """Each format has the facts of the others."""
    lists = [words for words in program.commands() if len(words) < 2]

    @staticmethod
    def text(value):
        return "" if value is None else str(value).lower() if isinstance(value, bool) else str(value)

    @staticmethod
    def records(*words):
        """Without the bytes of texts that are no UTF-8, which only JSON has."""
        for record in program.records(*words):
            yield {key: value for key, value in record.items() if not key.endswith("_hex")}

    def compare(self, text, value):
        if isinstance(value, float):
            self.assertEqual(float(text), value)  # the digits of the table
        elif "\ufffd" not in text:
            self.assertEqual(text, self.text(value))

    def test_csv(self):
        for words in self.lists:
            rows = list(csv.DictReader(io.StringIO(run(*words, "-o", "csv").stdout)))
            expected = list(self.records(*words))
            self.assertEqual(len(rows), len(expected))
            for row, record in zip(rows, expected):
                self.assertEqual(["kind", *row], list(record))
                for key, text in row.items():
                    self.compare(text, record[key])

    def test_esxcli(self):
        """Flat and typed: the same fields in each structure, numbers as numbers."""
        schema = json.loads(run("schema").stdout)["definitions"]
        for words in self.lists:
            root = xml.etree.ElementTree.fromstring(run(*words, "-o", "esxcli").stdout)
            self.assertEqual([part.tag for part in root], ["list"])
            expected = list(self.records(*words))
            self.assertEqual(len(root[0]), len(expected))
            for structure, record in zip(root[0], expected):
                kind = record.pop("kind")
                self.assertEqual((structure.tag, structure.attrib), ("structure", {"typeName": kind.capitalize()}))
                self.assertEqual([field.attrib["name"].lower() for field in structure],
                                 [key.replace("_", "") for key in record])
                for (key, value), field in zip(record.items(), structure):
                    is_integer = "integer" in schema[kind]["properties"][key]["type"]
                    self.assertEqual([leaf.tag for leaf in field], ["int" if is_integer else "string"])
                    if is_integer:
                        self.assertEqual(int(field[0].text), -1 if value is None else value)
                    else:
                        self.compare(field[0].text or "", value)

    def test_tables(self):
        """Every cell of a table is a value of its record."""
        for words in (["ports"], ["targets"], ["luns"], ["adapters"]):
            for line, record in zip(run(*words, "--no-headings").stdout.splitlines(), program.records(*words)):
                values = {str(value) for value in record.values()} | {"-"}
                for cell in filter(None, line.split("  ")):
                    cell = cell.strip()
                    self.assertTrue(cell in values or "size_bytes" in record and cell[-1] in "BKMGT", (cell, record))


if __name__ == "__main__":
    unittest.main()
