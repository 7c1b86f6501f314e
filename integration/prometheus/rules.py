"""Writes the alerting rules for the metrics of orfc."""
import json

from generator import read_program, run

# How long what a rule tells has to last. What moved between two readings is told by one run alone, and so is held.
LASTS = {'warning': '5m', 'critical': '1m'}
HELD = '15m'
# Metrics are late after three runs that failed.
LATE_SECONDS = {'counters': 3 * 60, 'transceivers': 3 * 15 * 60}


def quoted(text):
    return json.dumps(text)  # a text of YAML, too


def alert_name(rule):
    return 'Orfc' + ''.join(word.capitalize() for word in rule.split('-'))


def alert(name, expression, lasts, severity, summary, description, **labels):
    labels = {'severity': severity, **labels}
    return [f'  - alert: {name}', f'    expr: {quoted(expression)}', f'    for: {lasts}', '    labels:',
            *(f'      {label}: {quoted(value)}' for label, value in labels.items()), '    annotations:',
            f'      summary: {quoted(summary)}', f'      description: {quoted(description)}']


def health_alert(rule):
    findings = f'orfc_health_findings{{rule="{rule["name"]}"}}'
    if rule['compares_readings']:
        findings, lasts = f'max_over_time({findings}[{HELD}])', '0m'
    else:
        lasts = LASTS[rule['severity']]
    where = '{{ $labels.instance }} {{ or $labels.port $labels.adapter }}'
    return alert(alert_name(rule['name']), f'{findings} > 0', lasts, rule['severity'],
                 f'{where}: {rule["text"]} ({{{{ $value }}}})', f'{rule["meaning"]} {rule["remedy"]}', rule=rule['name'])


def generate(program):
    """Writes the alerting rules for the metrics of orfc."""
    lines = ['# Alerts for the metrics of orfc, one for each rule of orfc health, and for the metrics themselves.',
             'groups:', '- name: orfc', '  rules:']
    for rule in program['rules']:
        lines += health_alert(rule)
    lines += alert('OrfcScrapeFailed', 'orfc_scrape_success == 0', '5m', 'warning',
                   '{{ $labels.instance }}: the {{ $labels.what }} of Fibre Channel ports can\'t be read completely',
                   'The journal of orfc-exporter@{{ $labels.what }}.service tells what.')
    for what, seconds in LATE_SECONDS.items():
        lines += alert(f'OrfcLate{what.capitalize()}',
                       f'time() - orfc_last_run_timestamp_seconds{{what="{what}"}} > {seconds}', '0m', 'warning',
                       f'{{{{ $labels.instance }}}}: the {what} of Fibre Channel ports are old',
                       f'Look at orfc-exporter-{what}.timer and the journal of orfc-exporter@{what}.service.')
    return '\n'.join(lines) + '\n'


if __name__ == '__main__':
    run(generate, program=read_program)
