// Whether the window has room for one column alone; the same width as in columns.css.
import { useEffect, useState } from 'preact/hooks';

const query = matchMedia('(max-width: 900px)');

export function useNarrow(): boolean {
  const [isNarrow, setNarrow] = useState(query.matches);
  useEffect(() => {
    const see = () => setNarrow(query.matches);
    query.addEventListener('change', see);
    return () => query.removeEventListener('change', see);
  }, []);
  return isNarrow;
}
