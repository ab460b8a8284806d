#!/usr/bin/env python3
"""Changes the sources of rooms one place at a time, and tells which changes no test notices.

Each room is judged by its own test program alone. See README.md.
"""

import argparse
import itertools
import os
import random
import resource
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path

sys.dont_write_bytecode = True  # the checkout stays as it is
import cpp_source

ROOMS = ['base', 'forms', 'engine', 'dialect', 'file', 'adif']
# Tests that take seconds each; they run only when the quick ones have noticed nothing.
SLOW = {'file': 'JournalTest.*:PowerCut.*:Damage.*:*FailingDisk.*:AnotherProgramsLock.*'}
HEADINGS = ['room', 'file', 'line', 'kind', 'before', 'after', 'outcome', 'seconds']
HERE = Path(__file__).resolve().parent
PROJECT = HERE.parent.parent
MOST_MEMORY = 4 << 30
MOST_FILE = 1 << 30


def options():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument('--rooms', default=','.join(ROOMS), help='comma between, default all six')
    parser.add_argument('--count', type=int, default=200, help='mutants in all')
    parser.add_argument('--seed', type=int, default=1, help='the same seed makes the same mutants')
    parser.add_argument('--build', type=Path, default=PROJECT / 'build' / 'mutate',
                        help='folder of the copy that is changed, and of what is built from it')
    parser.add_argument('--out', type=Path, help='default SEED.tsv in the build folder; '
                        'what stands there already is not run again')
    parser.add_argument('--only', help='mutants of files whose path has this in it')
    parser.add_argument('--again', action='store_true',
                        help='judges anew what has survived there, by the tests of today')
    parser.add_argument('--list', action='store_true', help='tells the mutants and runs nothing')
    return parser.parse_args()


def run(command, cwd, limit=None, bounded=False):
    """The exit status, None when it took too long; and what was printed."""
    def prepare():
        os.setsid()
        if bounded:
            resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, MOST_MEMORY))
            resource.setrlimit(resource.RLIMIT_FSIZE, (MOST_FILE, MOST_FILE))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

    process = subprocess.Popen(command, cwd=cwd, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT, text=True, errors='replace',
                               preexec_fn=prepare)
    try:
        printed, _ = process.communicate(timeout=limit)
        return process.returncode, printed
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        printed, _ = process.communicate()
        return None, printed


def must(command, cwd):
    status, printed = run(command, cwd)
    if status != 0:
        sys.exit(f'{" ".join(map(str, command))}\n{printed}')
    return printed


class Copy:
    """A copy of the project's sources, with a build of its own."""

    def __init__(self, folder):
        self.source = folder / 'source'
        self.build = folder / 'build'
        self.scratch = folder / 'scratch'

    def refresh(self):
        """Takes over what the project has; files that are the same keep their time."""
        listed = must(['git', 'ls-files', '-z', '--cached', '--others', '--exclude-standard'],
                      PROJECT).split('\0')
        wanted = {name for name in listed if name and (PROJECT / name).is_file()}
        for name in wanted:
            to = self.source / name
            content = (PROJECT / name).read_bytes()
            if to.is_file() and to.read_bytes() == content:
                continue
            to.parent.mkdir(parents=True, exist_ok=True)
            to.write_bytes(content)
            shutil.copymode(PROJECT / name, to)
        for file in self.source.rglob('*'):
            if file.is_file() and str(file.relative_to(self.source)) not in wanted:
                file.unlink()
        must(['cmake', '-S', self.source, '-B', self.build, '-G', 'Ninja',
              '-DCMAKE_BUILD_TYPE=None', '-DCMAKE_CXX_FLAGS=-O0 -w', '-DBRENVO_SCREENS=OFF',
              '-DBRENVO_SANITIZE=OFF'], PROJECT)

    def make(self, room):
        return run(['ninja', f'{room}_test'], self.build)

    def test(self, room, limit):
        """The exit status of the room's tests, 0 when all pass, None when they took too long."""
        program = self.build / 'tests' / f'{room}_test'
        rounds = [f'-{SLOW[room]}', SLOW[room]] if room in SLOW else ['*']
        for tests in rounds:
            shutil.rmtree(self.scratch, ignore_errors=True)
            self.scratch.mkdir(parents=True)
            status, _ = run(['env', f'TMPDIR={self.scratch}', str(program), '--gtest_fail_fast',
                             '--gtest_brief=1', f'--gtest_filter={tests}'], program.parent, limit,
                            bounded=True)
            if status != 0:
                break
        return status


def mutants_of(copy, settings):
    """As many as asked for, one of each room in turn, drawn from all changes of the room alike."""
    decks = []
    for room in settings.rooms.split(','):
        deck = []
        for file in sorted((copy.source / room).glob('*.cpp')):
            name = str(file.relative_to(copy.source))
            if settings.only and settings.only not in name:
                continue
            text = file.read_text()
            deck += [(room, name, change) for change in cpp_source.changes_of(text)]
        random.Random(f'{settings.seed} {room}').shuffle(deck)
        decks.append(deck)
    turns = itertools.chain.from_iterable(itertools.zip_longest(*decks))
    return list(itertools.islice(filter(None, turns), settings.count))


def equivalent():
    """The changes that are known to change nothing, with the reason behind them."""
    known = set()
    for line in (HERE / 'equivalent.tsv').read_text().splitlines():
        if line and not line.startswith('#'):
            known.add(tuple(line.split('\t')[:3]))
    return known


def judge(copy, room, file, change, limit):
    path = copy.source / file
    text = path.read_text()
    path.write_text(cpp_source.applied(text, change))
    try:
        status, _ = copy.make(room)
        if status != 0:
            return 'uncompilable'
        status = copy.test(room, limit)
        return 'timeout' if status is None else 'survived' if status == 0 else 'killed'
    finally:
        path.write_text(text)


def measured(copy, rooms):
    """How long the tests of each room may take; ends the program when some fail unchanged."""
    limits = {}
    for room in sorted(rooms):
        status, printed = copy.make(room)
        if status != 0:
            sys.exit(printed)
        start = time.monotonic()
        if copy.test(room, None) != 0:
            sys.exit(f'{room}_test fails before anything is changed')
        limits[room] = max(20.0, 4 * (time.monotonic() - start))
    return limits


def found_again(copy, row):
    """The change of a row in the sources as they are, nearest to its line; None when it is gone."""
    path = copy.source / row['file']
    text = path.read_text() if path.is_file() else ''
    same = [change for change in cpp_source.changes_of(text)
            if cpp_source.described(text, change) == (row['before'], row['after'])]
    return min(same, default=None,
               key=lambda change: abs(cpp_source.line_of(text, change.start) - int(row['line'])))


def judge_again(copy, out):
    rows = read_rows(out)
    known = equivalent()
    survivors = [row for row in rows if row['outcome'] == 'survived' and
                 (row['file'], row['before'], row['after']) not in known]
    limits = measured(copy, {row['room'] for row in survivors})
    for row in survivors:
        change = found_again(copy, row)
        if change is not None:
            row['outcome'] = judge(copy, row['room'], row['file'], change, limits[row['room']])
        print(row['outcome'] if change else 'gone', f'{row["file"]}:{row["line"]}',
              row['before'], '->', row['after'], flush=True)
        lines = ['\t'.join(HEADINGS)] + ['\t'.join(each[h] for h in HEADINGS) for each in rows]
        out.write_text('\n'.join(lines) + '\n')
    return rows


def summary(rows, rooms):
    known = equivalent()
    lines = [f'{"":10}{"killed":>10}{"survived":>10}{"equivalent":>12}{"no build":>10}{"rate":>8}']
    for room in rooms + ['all']:
        of = [row for row in rows if room in ('all', row['room'])]
        killed = sum(row['outcome'] in ('killed', 'timeout') for row in of)
        same = sum(row['outcome'] == 'survived' and
                   (row['file'], row['before'], row['after']) in known for row in of)
        survived = sum(row['outcome'] == 'survived' for row in of) - same
        broken = sum(row['outcome'] == 'uncompilable' for row in of)
        rate = f'{100 * killed / (killed + survived):.0f} %' if killed + survived else '-'
        lines.append(f'{room:10}{killed:10}{survived:10}{same:12}{broken:10}{rate:>8}')
    return '\n'.join(lines)


def read_rows(out):
    if not out.is_file():
        return []
    return [dict(zip(HEADINGS, line.split('\t'))) for line in out.read_text().splitlines()[1:]]


def main():
    settings = options()
    rooms = settings.rooms.split(',')
    copy = Copy(settings.build.resolve())
    copy.refresh()
    out = settings.out or settings.build / f'{settings.seed}.tsv'
    if settings.again:
        print(summary(judge_again(copy, out), rooms))
        return
    mutants = mutants_of(copy, settings)
    if settings.list:
        for room, file, change in mutants:
            text = (copy.source / file).read_text()
            before, after = cpp_source.described(text, change)
            print(f'{file}:{cpp_source.line_of(text, change.start)}\t{change.kind}\t{before}\t{after}')
        return
    limits = measured(copy, {room for room, _, _ in mutants})
    rows = read_rows(out)
    done = {(row['file'], row['line'], row['before'], row['after']) for row in rows}
    if not rows:
        out.write_text('\t'.join(HEADINGS) + '\n')
    for number, (room, file, change) in enumerate(mutants, 1):
        text = (copy.source / file).read_text()
        line = str(cpp_source.line_of(text, change.start))
        before, after = cpp_source.described(text, change)
        if (file, line, before, after) in done:
            continue
        start = time.monotonic()
        outcome = judge(copy, room, file, change, limits[room])
        row = [room, file, line, change.kind, before, after, outcome,
               f'{time.monotonic() - start:.1f}']
        with out.open('a') as log:
            log.write('\t'.join(row) + '\n')
        rows.append(dict(zip(HEADINGS, row)))
        print(f'{number}/{len(mutants)} {outcome} {file}:{line} {before} -> {after}', flush=True)
    print(summary(rows, rooms))


if __name__ == '__main__':
    main()
