#!/usr/bin/env python3
"""Loads the completions into the real shells and asks what they offer. A shell that is not there is skipped.

    completions.py --corvid PROGRAM
"""
import argparse
import os
import pty
import select
import shutil
import subprocess
import sys
import tempfile
import time

# What is typed, and what the last word has to become or be offered as.
ROWS = [
    ("corvid che", "check"),
    ("corvid lay", "layout"),
    ("corvid layout inf", "infer"),
    ("corvid check --stri", "--strict"),
    ("corvid layout infer --outp", "--output"),
    ("corvid convert --to bi", "bin"),
    ("corvid check --format git", "github"),
    ("corvid check --vers", "--version"),
    ("corvid check --format=git", "github"),
]
FAILED = []


def expect(shell, line, word, offered):
    if word not in [each.rstrip("=").split("=")[-1] for each in offered]:
        FAILED.append(line)
        print("FAIL %s: %r offers %r, not %r" % (shell, line, offered, word))


def bash(script):
    for line, word in ROWS:
        words = " ".join("'%s'" % each for each in line.replace("=", " = ").split(" "))  # as it breaks words
        asked = "source '%s'; COMP_WORDS=(%s); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _corvid; echo ${COMPREPLY[*]}"
        run = subprocess.run(["bash", "-c", asked % (script, words)], capture_output=True, text=True, check=False)
        expect("bash", line, word, run.stdout.split() + run.stderr.split())


def fish(script):
    for line, word in ROWS:
        asked = "source '%s'; complete -C '%s'" % (script, line)
        run = subprocess.run(["fish", "--no-config", "-c", asked], capture_output=True, text=True, check=False)
        expect("fish", line, word, [each.split("\t")[0] for each in run.stdout.splitlines()] + run.stderr.split())


def zsh(script):
    """On a terminal, with the key that completes; another key writes down what stands there then."""
    folder = os.path.dirname(script)
    seen = os.path.join(folder, "seen")
    process, terminal = pty.fork()
    if process == 0:
        os.environ.update(TERM="dumb", PS1="")
        os.execvp("zsh", ["zsh", "-f", "-i"])

    def type_in(text):
        os.write(terminal, text.encode())
        while select.select([terminal], [], [], 0.3)[0] and os.read(terminal, 65536):
            pass

    type_in("fpath=('%s' $fpath); autoload -U compinit; compinit -D -u\n" % folder)
    type_in("show() { print -r -- $BUFFER >>'%s'; zle kill-buffer }; zle -N show; bindkey '^G' show\n" % seen)
    for line, _word in ROWS:
        type_in(line + "\t")
        type_in("\x07")
    os.write(terminal, b"exit\n")
    for _ in range(100):
        if os.waitpid(process, os.WNOHANG)[0]:
            break
        time.sleep(0.1)
    os.close(terminal)
    with open(seen, encoding="utf-8") as file:
        completed = file.read().splitlines()
    for (line, word), result in zip(ROWS, completed + [""] * len(ROWS)):
        expect("zsh", line, word, result.split())


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--corvid", required=True, type=os.path.abspath)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="completions-") as folder:
        for shell, name, ask in (("bash", "corvid.bash", bash), ("zsh", "_corvid", zsh), ("fish", "corvid.fish", fish)):
            if shutil.which(shell) is None:
                print("skipped: there is no", shell)
                continue
            script = os.path.join(folder, name)
            with open(script, "wb") as file:
                file.write(subprocess.run([options.corvid, "--generate", shell], capture_output=True, check=True).stdout)
            ask(script)
    sys.exit(1 if FAILED else 0)


if __name__ == "__main__":
    main()
