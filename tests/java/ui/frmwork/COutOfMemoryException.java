package ui.frmwork;

/** Stands in for the IDE's class: the library ran out of memory. */
public class COutOfMemoryException extends RuntimeException {
  public COutOfMemoryException(String message) {
    super(message);
  }
}
