#!/usr/bin/env python3
"""What generators share: the description is checked as its schema demands, and files are written whole."""
import copy
import json
import os
import pathlib
import re
import resource
import subprocess
import sys
import tempfile
import unittest

import jsonschema

INTEGRATION = pathlib.Path(__file__).parents[2] / 'integration'
sys.path.insert(0, str(INTEGRATION))
import generator  # pylint: disable=wrong-import-position

BUILD = pathlib.Path(sys.argv.pop(sys.argv.index('--build') + 1))
sys.argv.remove('--build')
DESCRIPTION = (BUILD / 'integration/orfc-esxcli.json').read_text()
SCHEMA = json.loads((INTEGRATION / 'description/orfc-esxcli.schema.json').read_text())

# A program of a generator.
COPY = """
import generator
generator.run(lambda description: description['program'] * 100_000, description=generator.read_description)
"""


def changes():
    """Descriptions with one change each, and what was changed: every key removed, every value of another type."""
    def walk(value, path):
        yield path
        for key, each in value.items() if isinstance(value, dict) else enumerate(value[:2]) \
                if isinstance(value, list) else ():
            yield from walk(each, (*path, key))
    description = json.loads(DESCRIPTION)
    # Words, options and a range.
    description['families'] = [family for family in description['families']
                               if family['path'][-1] in ('adapter', 'bbcr')]
    for path in list(walk(description, ()))[1:]:
        for replacement in (None, 'text', -1, [], {}, True):
            changed = copy.deepcopy(description)
            parent = changed
            for key in path[:-1]:
                parent = parent[key]
            if replacement is None:
                del parent[path[-1]]
            else:
                parent[path[-1]] = replacement
            yield path, changed


class Folder(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.output = self.folder / 'output'

    def refused(self, description, *options, status=1):
        """The message for a description, with which a run leaves everything as it was."""
        (self.folder / 'input').write_text(description)
        self.output.write_text('before')
        run = subprocess.run([sys.executable, '-B', '-c', COPY, self.folder / 'input', self.output, *options],
                             env={'PYTHONPATH': INTEGRATION}, capture_output=True, text=True, check=False)
        self.assertEqual((run.returncode, run.stdout), (status, ''))
        self.assertNotIn('Traceback', run.stderr)
        self.assertEqual(self.output.read_text(), 'before')
        self.assertEqual(sorted(os.listdir(self.folder)), ['input', 'output'])
        return run.stderr


class Check(unittest.TestCase):
    def test_agrees_with_the_schema(self):
        validator = jsonschema.Draft7Validator(SCHEMA)
        verdicts = []
        for path, changed in changes():
            valid = validator.is_valid(changed)
            verdicts.append(valid)
            self.assertEqual(generator.conforms(changed, SCHEMA, SCHEMA), valid, path)
        self.assertGreater(verdicts.count(False), 300)
        self.assertGreater(verdicts.count(True), 20)

    def test_accepts_the_description(self):
        self.assertEqual(generator.read_description(BUILD / 'integration/orfc-esxcli.json'), json.loads(DESCRIPTION))

    def test_understands_the_whole_schema(self):
        with self.assertRaisesRegex(generator.Problem, 'unknown keyword "uniqueItems"'):
            generator.check([], {'uniqueItems': True}, SCHEMA, '')


class Refusals(Folder):
    def test_names_the_place(self):
        description = json.loads(DESCRIPTION)
        del description['families'][2]['commands'][1]['arguments'][0]['kind']
        self.assertIn('/families/2/commands/1/arguments/0: lacks "kind"', self.refused(json.dumps(description)))
        description = json.loads(DESCRIPTION)
        description['families'][0]['commands'][0]['changes'] = 'no'
        self.assertIn('/families/0/commands/0/changes: ', self.refused(json.dumps(description)))
        self.assertIn(f'{self.folder}/input: ', self.refused(json.dumps(description)))

    def test_foreign(self):
        self.assertIn('is not JSON', self.refused('{"schema_version"'))
        self.assertIn('is not JSON', self.refused('[' * 100_000))
        self.assertIn('is not JSON', self.refused(''))
        self.assertIn('/: ', self.refused('[]'))
        self.assertIn('lacks "schema_version"', self.refused('{}'))
        self.assertIn('/program: ', self.refused(re.sub('"program": "[^"]*"', '"program": "other"', DESCRIPTION)))

    def test_another_version(self):
        description = json.loads(DESCRIPTION)
        major, minor = description['schema_version']
        description = {'schema_version': [major + 1, minor], 'other': 'form'}
        self.assertIn(f'/schema_version: is [{major + 1}, {minor}]', self.refused(json.dumps(description)))

    def test_arguments(self):
        self.assertIn('unrecognized arguments: --fast', self.refused(DESCRIPTION, '--fast', status=2))
        self.assertIn('unrecognized arguments: more', self.refused(DESCRIPTION, 'more', status=2))

    def test_missing_input(self):
        with self.assertRaises(OSError) as raised:
            generator.read_description(self.folder / 'none')
        self.assertIn('none', str(raised.exception))


class WholeFiles(Folder):
    def test_replaces(self):
        generator.write_whole(self.output, 'one')
        generator.write_whole(self.output, 'two\u2026')
        self.assertEqual(self.output.read_text(encoding='utf-8'), 'two\u2026')
        self.assertEqual(self.output.stat().st_mode & 0o777, 0o644)
        self.assertEqual(os.listdir(self.folder), ['output'])

    def test_full_disk(self):
        """Files may have 4,096 bytes."""
        self.output.write_text('before')
        (self.folder / 'input').write_text(DESCRIPTION)
        run = subprocess.run([sys.executable, '-B', '-c', COPY, self.folder / 'input', self.output],
                             preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (4096, 4096)),
                             env={'PYTHONPATH': INTEGRATION}, capture_output=True, text=True, check=False)
        self.assertEqual(run.returncode, 1)
        self.assertIn(f'{self.output}: File too large', run.stderr)
        self.assertEqual(self.output.read_text(), 'before')
        self.assertEqual(sorted(os.listdir(self.folder)), ['input', 'output'])

    def test_no_folder(self):
        with self.assertRaisesRegex(generator.Problem, 'none/output: No such file'):
            generator.write_whole(self.folder / 'none/output', '')

    def test_follows_no_link(self):
        """Someone else's link with the name of the output, or a folder."""
        (self.folder / 'theirs').write_text('theirs')
        self.output.symlink_to('theirs')
        generator.write_whole(self.output, 'ours')
        self.assertEqual((self.folder / 'theirs').read_text(), 'theirs')
        self.assertEqual((self.output.is_symlink(), self.output.read_text()), (False, 'ours'))
        (self.folder / 'folder').mkdir()
        with self.assertRaisesRegex(generator.Problem, 'folder: Is a directory'):
            generator.write_whole(self.folder / 'folder', '')
        self.assertEqual(sorted(os.listdir(self.folder)), ['folder', 'output', 'theirs'])


if __name__ == '__main__':
    unittest.main()
