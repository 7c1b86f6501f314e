from __future__ import absolute_import, division, print_function
__metaclass__ = type

DOCUMENTATION = r'''
name: port_rows
short_description: One row a port, for an inventory
description: Joins adapters and ports of hosts to rows with the columns of an inventory.
options:
  _input:
    description: Variables of hosts, with what M(orfc.fc.orfc_info) returned as fleet_read.
    type: list
    elements: dict
    required: true
'''

EXAMPLES = r'''
rows: "{{ ansible_play_hosts | map('extract', hostvars) | orfc.fc.port_rows }}"
'''

RETURN = r'''
_value:
  description: The rows.
  type: list
  elements: dict
'''

OF_PORT = ['firmware_version', 'driver_version', 'port_name', 'state', 'speed_gbps', 'fabric', 'switch']


def rows_of_host(host, info):
    adapters = dict((adapter['adapter'], adapter) for adapter in info['adapters'])
    for port in info['ports']:
        adapter = adapters.get(port['adapter'], {})
        row = dict(host=host, port=port['port'], model=adapter.get('model'), serial_number=adapter.get('serial_number'))
        row.update((key, port[key]) for key in OF_PORT)
        yield row


def port_rows(hosts):
    return [row for host in hosts for row in rows_of_host(host['inventory_hostname'], host['fleet_read'])]


class FilterModule(object):
    def filters(self):
        return dict(port_rows=port_rows)
