"""Writes the manual page of a host: a template with the sections of the host's README."""
import markdown
import roff
from generator import Template, run

TITLES = {'Variables': 'ENVIRONMENT'}
OF_DEVELOPERS = ['Sources']


def generate(readme, template):
    """Writes the manual page of a host of the management library."""
    lines = [line for title, text in readme if title not in OF_DEVELOPERS
             for line in roff.heading('SH', TITLES.get(title, title.upper())) + text]
    return roff.page(template, {'sections': lines})


if __name__ == '__main__':
    run(generate, readme=markdown.sections, template=Template)
