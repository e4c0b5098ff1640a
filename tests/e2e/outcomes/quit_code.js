try {
    quit(Number(args[0]));
} finally {
    print("never here");
}
