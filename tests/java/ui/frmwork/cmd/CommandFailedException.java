package ui.frmwork.cmd;

/** Stands in for the IDE's class: a library call that failed, with the library's text. */
public class CommandFailedException extends Exception {
  public CommandFailedException(String message) {
    super(message);
  }
}
