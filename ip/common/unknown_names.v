// Names unknown: stands in for the file of this name that generation writes into the work directory,
// which is searched first.
