"""Holds the worker against published results of D-Settlement, case by case.

Run it: make verify, or make verify CASES=/some/folder for a folder of your own.
"""
