#!/usr/bin/python3
"""Documents that the modules read, by themselves, and what is generated for them. Needs no Ansible."""
import subprocess
import sys
import unittest

from hosts import BUILD, COLLECTIONS, SOURCES

sys.dont_write_bytecode = True
sys.path[:0] = [str(COLLECTIONS), str(SOURCES / 'integration'), str(SOURCES / 'integration/ansible')]
import generator  # noqa: E402
import parameters  # noqa: E402
from ansible_collections.orfc.fc.plugins.filter.as_csv import as_csv  # noqa: E402
from ansible_collections.orfc.fc.plugins.filter.differences import differences  # noqa: E402
from ansible_collections.orfc.fc.plugins.filter.port_rows import port_rows  # noqa: E402
from ansible_collections.orfc.fc.plugins.module_utils import tool  # noqa: E402
from ansible_collections.orfc.fc.plugins.module_utils.parameters import FAMILIES  # noqa: E402

HEAD = b'{"json_format_version":[1,0],"ok":true,"messages":[],"records":'


def document(*fields, structure='S'):
    return f'<output><structure typeName="{structure}">{"".join(fields)}</structure></output>'


def field(name, value, kind='string'):
    return f'<field name="{name}"><{kind}>{value}</{kind}></field>'


def rows(*rows_of_fields):
    inner = ''.join(f'<structure typeName="R">{fields}</structure>' for fields in rows_of_fields)
    return f'<field name="L"><list type="structure">{inner}</list></field>'


SUCCESS = field('Message', 'Success')


class Json(unittest.TestCase):
    def refuse(self, words, text):
        self.assertRaisesRegex(tool.ToolFailure, words, tool.read_json, text)

    def test_records(self):
        self.assertEqual(tool.read_json(HEAD + '[{"model":"ü","speed":null}]}'.encode()), [{'model': 'ü', 'speed': None}])

    def test_refusals(self):
        self.refuse('same key twice', HEAD + b'[{"port":1,"port":2}]}')
        self.refuse('number NaN', HEAD + b'[{"power":NaN}]}')
        self.refuse('number -Infinity', HEAD + b'[{"power":-Infinity}]}')
        self.refuse('version 2', HEAD.replace(b'[1,', b'[2,') + b'[]}')
        self.refuse('a; b', HEAD.replace(b'true', b'false').replace(b'[]', b'["a","b"]') + b'[]}')
        self.refuse('no objects', HEAD + b'[1]}')
        for text in (b'', b'[]', b'{}', b'null', HEAD, HEAD + b'[]} x', HEAD + b'["\xff"]}', HEAD + b'5}', b'[' * 99999):
            self.refuse('', text)

    def test_every_truncation(self):
        whole = HEAD + b'[{"port":1}]}'
        for size in range(len(whole)):
            self.refuse('', whole[:size])


class Xml(unittest.TestCase):
    def refuse(self, words, text):
        def read():
            tool.read_row(tool.read_document(text, 'S'))
        self.assertRaisesRegex(tool.ToolFailure, words, read)

    def test_values(self):
        fields = tool.read_document(document(SUCCESS, field('N', '-7', 'int'), field('B', 'true', 'bool'),
                                             field('T', 'a&amp;b'), rows(field('F', '2048', 'int'))), 'S')
        self.assertEqual([fields[name] for name in ('N', 'B', 'T')], [-7, True, 'a&b'])
        self.assertEqual(tool.read_row(fields), {'F': '2048'})

    def test_lines(self):
        fields = tool.read_document(document(SUCCESS, rows(field('Data', 'A: 1\n      B C: x:y\n      D: \n'))), 'S')
        self.assertEqual(tool.read_row(fields), {'A': '1', 'B C': 'x:y', 'D': ''})

    def test_refusals(self):
        row = rows(field('F', '1', 'int'))
        self.refuse('Failed, so', document(field('Message', 'Failed, so'), row))
        self.refuse('no message', document(row))
        self.refuse('same field twice', document(SUCCESS, SUCCESS, row))
        self.refuse('same line twice', document(SUCCESS, rows(field('Data', 'A: 1\nA: 2'))))
        self.refuse('where "S" belongs', document(SUCCESS, row, structure='T'))
        self.refuse('no single row', document(SUCCESS))
        self.refuse('no single row', document(SUCCESS, rows()))
        self.refuse('no single row', document(SUCCESS, rows(field('F', '1'), field('F', '1'))))
        self.refuse('bad <int>', document(SUCCESS, rows(field('F', '1x', 'int'))))
        self.refuse('bad <bool>', document(SUCCESS, rows(field('F', '1', 'bool'))))
        self.refuse('bad <real>', document(SUCCESS, rows(field('F', '1', 'real'))))
        self.refuse('bad <string>', document(SUCCESS, rows(field('F', '<b/>'))))
        self.refuse('bad <field>', document(SUCCESS, '<field name="F"/>'))
        self.refuse('bad <other>', document(SUCCESS, '<other/>'))
        self.refuse('one structure', '<output/>')
        self.refuse('one structure', '<root><structure/></root>')

    def test_every_truncation(self):
        whole = document(SUCCESS, rows(field('F', '1', 'int')))
        for size in range(len(whole)):
            self.refuse('not XML', whole[:size])


class Parameters(unittest.TestCase):
    """What is generated, against what is described."""

    DESCRIPTION = generator.read_description(BUILD / 'integration/orfc-esxcli.json')

    def test_labels(self):
        """Each label is one of the report, and of its own option: a report of a port has it after the option is set.
        The modules' tests see to that; here, the pairs in which the words differ."""
        labels = {row['option']: row['label'] for row in FAMILIES['hbaparams']['parameters'].values()}
        self.assertEqual(labels['--enable-bios'], 'Enable Host Hba Bios')
        self.assertEqual(labels['--hard-loop-id'], 'Hard Loop Id')
        self.assertEqual(labels['--enable-hard-loop-id'], 'Enable Hard Loop Id')
        self.assertEqual(labels['--interrupt-delay-timer'], 'Interrupt Delay Timer In 100us')
        report = self.command('hbaparams', 'get')['document']['row_fields']
        self.assertEqual(sorted(labels.values()), sorted(each['name'] for each in report))

    def command(self, family, name):
        found = next(each for each in self.DESCRIPTION['families'] if each['path'][-1] == family)
        return next(each for each in found['commands'] if each['name'] == name)

    def test_options(self):
        """All options but those of boot targets, and the reset of counters, are parameters."""
        for family, command, others in [
                ('hbaparams', 'setFile', set()), ('bbcr', 'setFile', set()), ('fec', 'set', {'--reset'}),
                ('bootconfigext', 'setFile', {'--boot-target-num', '--boot-target-wwpn', '--boot-disk-num',
                                              '--boot-target-enable'})]:
            options = {each['name'] for each in self.command(family, command)['arguments'] if each['name'][0] == '-'}
            self.assertEqual({row['option'] for row in FAMILIES[family]['parameters'].values()}, options - others)

    def test_option_without_a_label(self):
        self.assertRaises(generator.Problem, parameters.label_of, '--frame-size', ['Frame', 'Size Frame'])

    def test_bad_input(self):
        program = [sys.executable, '-B', SOURCES / 'integration/ansible/parameters.py', 'table', '/dev/null', '/nowhere']
        result = subprocess.run(program, env={'PYTHONPATH': str(SOURCES / 'integration')}, stderr=subprocess.PIPE,
                                text=True, check=False)
        self.assertEqual((result.returncode, result.stderr.count('\n')), (1, 1))


class Rows(unittest.TestCase):
    HOST = {'inventory_hostname': 'h1', 'fleet_read': {
        'adapters': [{'adapter': 'A', 'model': 'M', 'serial_number': 'S'}],
        'ports': [{'port': 'P', 'adapter': 'A', 'firmware_version': '1', 'driver_version': None, 'port_name': 'N',
                   'state': 'online', 'speed_gbps': 16, 'fabric': 'F', 'switch': 'W', 'more': 1}]}}

    def test_rows(self):
        self.assertEqual(as_csv(port_rows([self.HOST])),
                         'host,port,model,serial_number,firmware_version,driver_version,port_name,state,speed_gbps,'
                         'fabric,switch\nh1,P,M,S,1,,N,online,16,F,W\n')
        self.assertEqual(as_csv([]), '')

    def test_quotes(self):
        self.assertEqual(as_csv([{'a': 'x,"y"\n'}]), 'a\n"x,""y""\n"\n')

    def test_differences(self):
        def row(host, model, firmware):
            return {'host': host, 'port': 'P' + host, 'model': model, 'firmware_version': firmware}
        found = differences([row('1', 'M', '9'), row('2', 'M', '9'), row('3', 'M', '8'), row('4', 'N', '7'),
                             row('5', 'O', '1'), row('6', 'O', None), row('7', 'O', '1')], ['firmware_version'])
        self.assertEqual(found, [
            {'host': '3', 'port': 'P3', 'model': 'M', 'column': 'firmware_version', 'value': '8', 'usual': '9'},
            {'host': '6', 'port': 'P6', 'model': 'O', 'column': 'firmware_version', 'value': None, 'usual': '1'}])
        # Equally frequent: the last one as a text, whatever the order.
        for order in (['8', '9'], ['9', '8']):
            found = differences([row(value, 'M', value) for value in order], ['firmware_version'])
            self.assertEqual([each['value'] for each in found], ['8'])


if __name__ == '__main__':
    unittest.main()
