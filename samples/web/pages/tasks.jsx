// A page whose inputs are controlled by React: what is typed shows only when React has noticed it.
import { useState } from 'react';
import { createRoot } from 'react-dom/client';

function Tasks() {
  const [text, setText] = useState('');
  const [urgent, setUrgent] = useState(false);
  const [size, setSize] = useState('small');
  const [tasks, setTasks] = useState([]);

  function add() {
    if (!text) return;
    setTasks([...tasks, `${text}, ${size}${urgent ? ', urgent' : ''}`]);
    setText('');
  }
  return (
    <>
      <h1>Tasks</h1>
      <input
        placeholder="New task"
        value={text}
        onChange={(event) => setText(event.target.value)}
        onKeyDown={(event) => event.key === 'Enter' && add()}
      />
      <label>
        <input type="checkbox" checked={urgent} onChange={() => setUrgent(!urgent)} /> Urgent
      </label>
      <select aria-label="Size" value={size} onChange={(event) => setSize(event.target.value)}>
        <option value="small">Small</option>
        <option value="large">Large</option>
      </select>
      <button onClick={add}>Add</button>
      <p>Typed: <span id="typed">{text}</span></p>
      <ul>{tasks.map((task) => <li key={task}>{task}</li>)}</ul>
    </>
  );
}

createRoot(document.getElementById('root')).render(<Tasks />);
